#include "tools/lorv/formula/calculation.h"

#include <algorithm>
#include <cmath>

#include "TEXPRESSCAL/exact_formula.h"
#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/formula/formula_digits.h"
#include "tools/lorv/language/spoken_language.h"

// Evaluates one formula for `calc`, `check` and the session: with all digits, or as the suite does. The
// suite's way is the calculator of the library itself, and what it does not report by its number is
// found out beside it.

namespace lorv::tool {
namespace {

const NameValue* ValueOf(const CString& name, const std::vector<NameValue>& values) {
  const auto found = std::find_if(values.begin(), values.end(), [&](const NameValue& value) {
    return NameKey(value.name.View()) == NameKey(name.View());
  });
  return found == values.end() ? nullptr : &*found;
}

// The formula with all digits of the values in place of their names.
CString WithValues(const CString& formula, const std::vector<NameValue>& values) {
  CString text;
  int at = 0;
  for (const FormulaWord& word : NamesOf(formula.View())) {
    const NameValue* const value = ValueOf(word.name, values);
    if (value == nullptr) continue;
    text += formula.Mid(at, word.position - at);
    at = word.position + word.length;
    // "2L" is a product; the digits of both would make one number.
    const bool behind_digit =
        word.position > 0 && formula[word.position - 1] >= '0' && formula[word.position - 1] <= '9';
    if (behind_digit && !value->is_text) text += _T("*");
    text += value->is_text ? value->text : value->number < 0 ? Literal(value->number) : Digits(value->number);
  }
  return text + formula.Mid(at);
}

// The suite's way, with the places of the formula as typed kept: what the calculator and the diagnosis see
// has texts put in, and its places mean nothing to the user.
class SuiteWay {
 public:
  SuiteWay(const CString& formula, const std::vector<NameValue>& values) : typed_(formula), values_(values) {}

  Calculation Evaluate() {
    PutInTexts();
    calculator_.SetExpr(set_);
    for (const NameValue& value : values_) {
      if (value.is_text) continue;
      calculator_.SetVarValue(value.name, value.number, false);
      numbers_[value.name] = value.number;
    }
    int error = 0;
    const double value = calculator_.Calculate(error);
    Calculation result{typed_, calculator_.GetCalcedExpr(), std::nullopt, FindFault(error, value), {}};
    if (error == 0 && std::isfinite(value)) result.value = value;
    return result;
  }

 private:
  void PutInTexts();
  void Append(const CString& piece, int place, bool as_typed);
  std::optional<Fault> FindFault(int error, double value) const;
  std::optional<Fault> UnreachedName() const;

  CString typed_;
  const std::vector<NameValue>& values_;
  CString set_;              // with texts in place of their names, as the calculator gets it
  std::vector<int> places_;  // of each unit of it, and of its end, in the formula as typed
  CMapValue numbers_;
  CAdExpCalculate calculator_;
};

// Texts are put in for their names before the calculator sees the formula: it knows numbers only.
void SuiteWay::PutInTexts() {
  int at = 0;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    const NameValue* const value = ValueOf(word.name, values_);
    if (value == nullptr || !value->is_text) continue;
    Append(typed_.Mid(at, word.position - at), at, true);
    Append(value->text, word.position, false);
    at = word.position + word.length;
  }
  Append(typed_.Mid(at), at, true);
  places_.push_back(typed_.GetLength());
}

void SuiteWay::Append(const CString& piece, int place, bool as_typed) {
  // A text stands for the whole name, so every place in it leads to where that begins.
  set_ += piece;
  for (int i = 0; i < piece.GetLength(); ++i) places_.push_back(as_typed ? place + i : place);
}

std::optional<Fault> SuiteWay::FindFault(int error, double value) const {
  // Asked in any case: the calculator gives 0 for much that is wrong, and no error.
  std::optional<Fault> fault = FaultOf(set_, numbers_, {});
  if (fault) {
    const int behind =
        places_[static_cast<std::size_t>(fault->position) + static_cast<std::size_t>(fault->length)];
    fault->position = places_[static_cast<std::size_t>(fault->position)];
    fault->length = std::max(0, behind - fault->position);
    return fault;
  }
  if (error != 0) return Fault{0, typed_.GetLength(), Say("the formula cannot be calculated"), false, true};
  if (!std::isfinite(value)) return Fault{0, typed_.GetLength(), Say("the result is no number"), false, true};
  return UnreachedName();
}

// Where a value is shorter than its name, the search for the name goes on a little too far behind it: a
// second place close by keeps the name, which then counts 1000000.
std::optional<Fault> SuiteWay::UnreachedName() const {
  const auto left = NamesOf(calculator_.GetCalcedExpr().View());
  if (left.empty()) return std::nullopt;
  const CString& name = left[0].name;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    if (NameKey(word.name.View()) != NameKey(name.View())) continue;
    return Fault{
        word.position, word.length,
        Say("the value of {} does not reach all its places, and counts 1000000 there; write it once, or with "
            "blanks around",
            {word.name.ToUtf8()}),
        false, false};
  }
  return std::nullopt;
}

// The library takes it for 0; nobody types it on purpose.
std::optional<Fault> EmptyFormula(const CString& formula) {
  if (!formula.IsEmpty()) return std::nullopt;
  return Fault{0, 0, Say("the formula is empty"), true, true};
}

}  // namespace

Calculation CalculateExactly(const CString& formula, const std::vector<NameValue>& values) {
  Calculation result{formula, WithValues(formula, values), std::nullopt, EmptyFormula(formula), {}};
  if (result.fault) return result;
  std::vector<ExactName> names;
  std::vector<double> numbers;
  for (const NameValue& value : values) {
    names.push_back({value.name, value.is_text});
    numbers.push_back(value.number);
  }
  ExactFormula exact(formula, names);
  if (exact.Fault().fault != FormulaFault::kNone) {
    result.fault = FaultOf(exact.Fault());
    return result;
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    // Without its quotes: the library wants what they hold.
    if (values[i].is_text)
      exact.SetText(i, values[i].text.View().substr(1, values[i].text.View().size() - 2));
  }
  for (const FormulaDiagnosis& doubt : exact.Doubts()) result.doubts.push_back(FaultOf(doubt));
  int code = 0;
  const double value = exact.Evaluate(numbers.data(), code);
  if (std::isfinite(value)) result.value = value;
  if (code == kDoubtfulNumber) {
    result.doubts.push_back(FaultOf(exact.Explain()));
  } else if (code != 0) {
    // The number may stand: some faults only say that it hardly is what was meant.
    result.fault = FaultOf(exact.Explain());
    if (result.fault->stops) result.value.reset();
  } else if (!result.value) {
    result.fault = Fault{0, formula.GetLength(), Say("the result is no number"), false, true};
  }
  return result;
}

Calculation CalculateAsSuite(const CString& formula, const std::vector<NameValue>& values) {
  if (formula.IsEmpty()) return {formula, formula, std::nullopt, EmptyFormula(formula), {}};
  return SuiteWay(formula, values).Evaluate();
}

}  // namespace lorv::tool
