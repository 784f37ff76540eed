#include "tools/lorv/formula/formula_fault.h"

#include "TEXPRESSCAL/diagnose.h"
#include "tools/lorv/text/spoken_language.h"

namespace lorv::tool {
namespace {

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
