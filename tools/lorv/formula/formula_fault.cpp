#include "tools/lorv/formula/formula_fault.h"

#include "TEXPRESSCAL/diagnose.h"
#include "tools/lorv/language/spoken_language.h"

// Faults as the tool reports them, from those of the library: in one language, with the proposal in the same
// sentence, and parted into what is wrong with the formula and what only with its values.

namespace lorv::tool {
namespace {

// With other values these may go away, so a rule that has them is evaluated for the next component.
bool IsOfValues(FormulaFault fault) {
  return fault == FormulaFault::kDivisionByZero || fault == FormulaFault::kOutsideDomain ||
         fault == FormulaFault::kMissingArgument || fault == FormulaFault::kMalformedArguments ||
         fault == FormulaFault::kNoNumber;
}

}  // namespace

Fault FaultOf(const FormulaDiagnosis& found) {
  const bool chinese = SpokenLanguage() == Language::kChinese;
  std::string message = (chinese ? found.chinese : found.english).ToUtf8();
  if (!found.suggestion.IsEmpty()) {
    const bool sign = found.fault == FormulaFault::kFullWidth;
    // For a full-width sign the proposal is no question: it is the same sign as formulas know it.
    message += Say(sign ? ", {}" : "; did you mean {}?", {found.suggestion.ToUtf8()});
  }
  return Fault{found.position, found.length, message, !IsOfValues(found.fault) && found.stops, found.stops};
}

std::optional<Fault> FaultOf(const CString& formula, const CMapValue& values, const TDefsetVars& keywords) {
  const FormulaDiagnosis found = DiagnoseFormula(formula, values, keywords);
  if (found.fault == FormulaFault::kNone) return std::nullopt;
  return FaultOf(found);
}

}  // namespace lorv::tool
