#include "TEXPRESSCAL/diagnose.h"

#include "TEXPRESSCAL/diagnose/diagnose_text.h"
#include "TEXPRESSCAL/diagnose/formula_trace.h"
#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/function_table.h"
#include "TEXPRESSCAL/values/substitution.h"

// Says what is wrong with a formula and where, in the text as typed. It is asked when an evaluation has
// failed, or while a user types, so it repeats the plain way with every unit's place carried along, instead
// of burdening that way. As it goes the calculator's own way, it finds a fault where that reports one.

namespace lorv {
namespace {

// Accepts the names that the formula may use and gathers those that have no value.
class NameResolver final : public CValidParameter {
 public:
  NameResolver(const CMapValue& values, const TDefsetVars& keywords) : values_(values), keywords_(keywords) {}

  int ValidParameter(LPCTSTR name) const override {
    // A longer name would be cut to a key that may be another's.
    const bool has_value = TextLength(name) <= CStrCmp::kCapacity && values_.count(name) != 0;
    if (!has_value && keywords_.FindKey(name) < 0) return 0;
    if (!has_value) valueless_.emplace_back(name);
    return 1;
  }

  const std::vector<CString>& Valueless() const { return valueless_; }

 private:
  const CMapValue& values_;
  const TDefsetVars& keywords_;
  mutable std::vector<CString> valueless_;
};

std::vector<CString> KnownNames(const CMapValue& values, const TDefsetVars& keywords) {
  std::vector<CString> names;
  for (const auto& [name, value] : values) names.emplace_back(static_cast<LPCTSTR>(name));
  for (const CStrCmp& name : keywords) names.emplace_back(static_cast<LPCTSTR>(name));
  // Functions, too, as their names are mistyped like any other.
  for (const CDtaFunction& function : Functions()) names.emplace_back(function.pszName);
  return names;
}

// Parses what the values have left; keywords without a value become 0 and the text is parsed again.
const ExprNode* ParseWithKeywords(FormulaTrace& trace, const CMapValue& values, const TDefsetVars& keywords) {
  const NameResolver resolver(values, keywords);
  const ExprNode* const root = trace.Parse(resolver);
  if (root == nullptr || resolver.Valueless().empty()) return root;
  for (const CString& name : resolver.Valueless()) SubstituteValue(trace.Text(), name.View(), 0);
  return trace.Parse(NameResolver(values, keywords));
}

FormulaDiagnosis Diagnose(TextView typed, const CMapValue& values, const TDefsetVars& keywords) {
  FormulaTrace trace(typed);
  trace.LimitNames(CStrCmp::kCapacity);
  for (const auto& [name, value] : values) {
    const TextView text(static_cast<LPCTSTR>(name));
    if (!text.empty()) SubstituteValue(trace.Text(), text, value);
  }
  const ExprNode* root = ParseWithKeywords(trace, values, keywords);
  if (root == nullptr) return trace.ExplainParse(KnownNames(values, keywords));
  Evaluator evaluator(nullptr);
  evaluator.Evaluate(root);
  if (evaluator.Error() == kNoError) return {};
  return trace.ExplainEvaluation(evaluator.Error(), evaluator.ErrorNode());
}

}  // namespace

FormulaDiagnosis DiagnoseFormula(LPCTSTR formula, const CMapValue& values, const TDefsetVars& keywords) {
  const TextView typed = formula == nullptr ? TextView() : TextView(formula);
  if (typed.empty()) return {};
  if (typed.size() > kMaxFormulaText) {
    FormulaDiagnosis diagnosis;
    diagnosis.fault = FormulaFault::kTooLong;
    diagnosis.position = kMaxFormulaText;
    diagnosis.length = static_cast<int>(typed.size()) - kMaxFormulaText;
    diagnosis.chinese = TextOfFault(FormulaFault::kTooLong).chinese;
    diagnosis.english = TextOfFault(FormulaFault::kTooLong).english;
    // The calculator cuts the text and evaluates what is left.
    diagnosis.stops = false;
    return diagnosis;
  }
  // Read as it stands and never parsed: ".5" is a number here, though the grammar refuses it.
  if (IsPlainNumber(typed)) return {};
  return Diagnose(typed, values, keywords);
}

}  // namespace lorv
