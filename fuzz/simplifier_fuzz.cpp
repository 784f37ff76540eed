// Properties: what SimplifySafely gives is no longer than the formula and has its value and its error for all
// values of the variables, bit for bit; the rules that work on characters come to an end for any text.
//
// The first byte holds the flags and, in its highest used bit, whether the sign of zero counts; the rest is
// the formula.

#include <bit>

#include "TEXPRESSCAL/calculator.h"
#include "TEXPRESSCAL/optimize_expression.h"
#include "TEXPRESSCAL/simplify_safely.h"
#include "framework/objects/exceptions.h"
#include "fuzz/formula_input.h"

namespace {

constexpr double kValues[] = {0, 1, -1, 2.5, -0.125, 0.3333, 1000000, 3.0005};
constexpr std::size_t kFlags = 16;

struct Outcome {
  double value = 0;
  int error = 0;
  bool is_formula = false;  // every name has a value

  bool Is(const Outcome& other, bool with_sign_of_zero) const {
    if (error != other.error) return false;
    if (!with_sign_of_zero && value == other.value) return true;
    return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value) ||
           (value != value && other.value != other.value);
  }
};

Outcome Evaluated(const CString& formula, std::size_t turn) {
  CAdExpCalculate calculator(formula);
  for (const TCHAR* name : {_T("A"), _T("B"), _T("AB"), _T("墙"), _T("H")})
    calculator.SetVarValue(name, kValues[turn++ % std::size(kValues)], false);
  Outcome outcome;
  outcome.value = calculator.Calculate(outcome.error);
  CExpression expression;
  outcome.is_formula = expression.ChangeExpression(calculator.GetCalcedExpr()) < 0;
  return outcome;
}

void CheckSafely(const CString& formula, bool sign_counts) {
  const auto zero_sign = sign_counts ? lorv::ZeroSign::kKept : lorv::ZeroSign::kIgnored;
  const CString shorter = lorv::SimplifySafely(formula, zero_sign);
  const std::string shown = formula.ToUtf8() + " -> " + shorter.ToUtf8();
  if (shorter.GetLength() > formula.GetLength()) lorv::fuzz::Require("longer than before", shown);
  if (shorter == formula) return;
  for (std::size_t turn = 0; turn < std::size(kValues); ++turn) {
    const Outcome before = Evaluated(formula, turn);
    const bool same = !before.is_formula || Evaluated(shorter, turn).Is(before, sign_counts);
    lorv::fuzz::Require(same ? "" : "another outcome with values " + std::to_string(turn), shown);
  }
}

void RunRules(CString formula, std::size_t flags) {
  COptimizeExpression rules;
  rules.SetKeyValue(_T("墙"), 2);
  try {
    rules.OptimizateExper(formula, static_cast<int>(flags));
  } catch (CInvalidArgException* exception) {
    exception->Delete();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const lorv::reference::Text text =
      lorv::fuzz::TextOf(std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
  const CString formula(text);
  CheckSafely(formula, (data[0] & kFlags) == 0);
  RunRules(formula, data[0] % kFlags);
  return 0;
}
