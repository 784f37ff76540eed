#include "tools/lorv/formula/formula_fault.h"

#include "TEXPRESSCAL/diagnose.h"

namespace lorv::tool {
namespace {

bool IsOfValues(FormulaFault fault) {
  return fault == FormulaFault::kDivisionByZero || fault == FormulaFault::kOutsideDomain ||
         fault == FormulaFault::kMissingArgument || fault == FormulaFault::kMalformedArguments;
}

}  // namespace

std::optional<Fault> FaultOf(const CString& formula, const CMapValue& values, const TDefsetVars& keywords) {
  const FormulaDiagnosis found = DiagnoseFormula(formula, values, keywords);
  if (found.fault == FormulaFault::kNone) return std::nullopt;
  std::string message = found.english.ToUtf8();
  if (!found.suggestion.IsEmpty()) {
    const bool sign = found.fault == FormulaFault::kFullWidth;
    message += (sign ? ", " : "; did you mean ") + found.suggestion.ToUtf8() + (sign ? "" : "?");
  }
  return Fault{found.position, found.length, message, !IsOfValues(found.fault), found.stops};
}

}  // namespace lorv::tool
