#include "TEXPRESSCAL/calculator/formula_engine.h"

#include "TEXPRESSCAL/calculator.h"
#include "TEXPRESSCAL/direct/direct_evaluator.h"
#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/values/substitution.h"
#include "framework/text/number_text.h"

// Chooses for each evaluation the cheapest way that is sure: a plan, the direct evaluation, else the text. A
// way that is not sure refuses and the next one is asked, so the text way, which refuses nothing, defines
// every answer. What was set is kept in capitals; the working copy lags behind until somebody reads it.

namespace lorv {

// Plans and places are not copied: they are large, and cheap to make again.
void FormulaEngine::CopyTexts(FormulaEngine& other) {
  formula_ = other.formula_;
  working_ = other.WorkingText();
  content_ = Content::kWritten;
  repeated_.Forget();
}

// Not typed as the last one was, which may still be the same in capitals.
void FormulaEngine::SetOtherText(LPCTSTR typed, bool& too_long) {
  const TextView text = typed == nullptr ? TextView() : TextView(typed, TextLength(typed));
  too_long = text.size() > kFormulaTextFlagged;
  const TextView kept = text.substr(0, kMaxFormulaText);
  if (IsInCapitals(kept, formula_.View())) {
    // A text that is too long is flagged each time, so it must come here each time.
    repeated_.SetAgain(too_long ? TextView() : text);
    return;
  }
  repeated_.Forget();
  CopyCapitals(kept, formula_.Overwrite(kept.size()));
}

// Nothing is touched where it is written already: several threads may copy from one calculator.
GrowingEdit& FormulaEngine::WorkingText() {
  if (content_ == Content::kWritten) return working_;
  working_ = formula_;
  if (content_ == Content::kFormulaAndPlan) repeated_.WriteValues(working_);
  if (content_ == Content::kFormulaAndPlaces) places_.WriteInto(working_);
  content_ = Content::kWritten;
  return working_;
}

// A formula that has been set once only is not planned: a plan pays from the third evaluation on.
double FormulaEngine::CalculateUnplanned(const CMapValue& values, const CValidParameter& names, int& error) {
  if (content_ != Content::kFormula || !repeated_.IsSetAgain()) return CalculateSingly(values, names, error);
  double value = 0;
  if (!repeated_.Evaluate(Formula(), values, value, error)) {
    value = CalculateSingly(values, names, error);
    repeated_.Observe(Formula(), values);
    return value;
  }
  content_ = Content::kFormulaAndPlan;
  error = ErrorForCaller(error);
  return error == 0 ? value : 0;
}

double FormulaEngine::CalculateSingly(const CMapValue& values, const CValidParameter& names, int& error) {
  double value = 0;
  error = 0;
  return EvaluateDirectly(values, value) ? value : CalculateText(values, names, error);
}

// A plain number comes out of the direct evaluation as it is read.
bool FormulaEngine::EvaluateDirectly(const CMapValue& values, double& value) {
  // After an earlier evaluation the working copy holds the values of that one, and is what is evaluated from
  // then on.
  if (content_ != Content::kFormula) return false;
  if (!DirectEvaluator(formula_.Text(), values, places_).Evaluate(value)) return false;
  content_ = Content::kFormulaAndPlaces;
  return true;
}

// The plain way, which all others agree with.
double FormulaEngine::CalculateText(const CMapValue& values, const CValidParameter& names, int& error) {
  const TextView text = WorkingText().View();
  // Read and not parsed: ".5" is a number here, though the grammar refuses it.
  if (IsPlainNumber(text)) return ReadReal(text);
  const int failed = Substitute(values, names);
  if (failed >= 0) {
    error = failed;
    return 0;
  }
  double value = 0;
  error = ErrorForCaller(expression_.Value(value));
  return error == 0 ? value : 0;
}

// Writes the values into the working copy, then 0 for keywords that have none, and leaves its tree in
// Parsed(). Only a text that zeros have changed is parsed a second time.
int FormulaEngine::Substitute(const CMapValue& values, const CValidParameter& names) {
  GrowingEdit& text = WorkingText();
  for (const auto& [key, value] : values) {
    // In the order of the map: a value that is written first may change what the next name finds.
    const TextView name(static_cast<LPCTSTR>(key));
    if (!name.empty()) SubstituteValue(text, name, value);
  }
  const int failed = Parse(text.View(), names);
  if (failed >= 0 || !SubstituteZeros(values)) return failed;
  return Parse(text.View(), names);
}

// For the names that the last parse accepted; false where all of them have values. A name with a value is
// left in the text where the substitution misses it.
bool FormulaEngine::SubstituteZeros(const CMapValue& values) {
  if (expression_.m_szVarList[0] == 0) return false;
  bool any = false;
  ForEachListedName(expression_.AcceptedNames(), [&](const CString& listed) {
    const CStrCmp name(listed);
    if (values.count(name) != 0) return;
    SubstituteValue(working_, static_cast<LPCTSTR>(name), 0);
    any = true;
  });
  return any;
}

// It uses the working copy and puts back what stood there.
double FormulaEngine::CalculateAside(TextView formula, const CMapValue& values,
                                     const CValidParameter& names) {
  GrowingEdit& text = WorkingText();
  const GrowingEdit kept = text;
  CopyCapitals(formula, text.Overwrite(formula.size()));
  double value = 0;
  const bool is_good = Substitute(values, names) < 0 && ErrorForCaller(expression_.Value(value)) == 0;
  text = kept;
  return is_good ? value : 0.0;
}

// The expression is cleared, not made anew: its storage is what makes repeated parses cheap.
int FormulaEngine::Parse(TextView text, const CValidParameter& names) {
  expression_.Clear();
  // The only operation of it leaves it as it is; the field has the type that callers know.
  expression_.m_pValidParameter = const_cast<CValidParameter*>(&names);
  return expression_.ChangeExpression(text);
}

}  // namespace lorv
