#pragma once

#include <cstdint>

#include "TEXPRESSCAL/compiled/repeated_formula.h"
#include "TEXPRESSCAL/expression.h"
#include "TEXPRESSCAL/map_value.h"
#include "TEXPRESSCAL/text/text_edit.h"
#include "TEXPRESSCAL/values/keyword_memory.h"
#include "TEXPRESSCAL/values/value_places.h"

namespace lorv {

// What a calculator holds: its formula, the working copy of it, and whatever makes the next evaluation
// cheaper.
//
// A formula is evaluated in the cheapest way that is sure to give what the plain way gives, which is: values
// written into the working copy, the text parsed, the tree evaluated. A formula that was just set is tried by
// DirectEvaluator, one that is set again and again by the plans of RepeatedFormula; each of them refuses what
// it is not sure of. The working copy is written only when somebody reads it; until then `content_` says what
// it would be written from:
//
//   kFormula        --- direct evaluation --->  kFormulaAndPlaces
//   kFormula        --- evaluation of a plan ->  kFormulaAndPlan
//   any             --- WorkingText() -------->  kWritten
//   any             --- Set() ---------------->  kFormula
class FormulaEngine {
 public:
  FormulaEngine() = default;
  FormulaEngine(const FormulaEngine&) = delete;
  FormulaEngine& operator=(const FormulaEngine&) = delete;

  // Takes over another's formula and working copy, which is written out for it.
  void CopyTexts(FormulaEngine& other);

  // Sets the formula, which also resets the working copy. `too_long` receives whether it is longer than
  // ValidExp allows; it stays as it is where the same text is set again.
  void Set(LPCTSTR typed, bool& too_long) {
    content_ = Content::kFormula;
    if (!repeated_.IsTyped(typed)) SetOtherText(typed, too_long);
  }
  TextView Formula() const { return formula_.View(); }
  // Terminated.
  LPCTSTR FormulaText() const { return formula_.Text(); }
  // The working copy, written out now if it was not. It may be edited.
  GrowingEdit& WorkingText();

  // Evaluates the working copy with these values; `names` resolves the names that have none. 0 with an error.
  // A plan that succeeds needs no more than is done here; all else is rare beside it.
  double Calculate(const CMapValue& values, const CValidParameter& names, int& error) {
    double value = 0;
    const bool is_planned = content_ == Content::kFormula && repeated_.IsPlannedFor(values);
    if (!is_planned || !repeated_.EvaluatePlan(values, value, error) || error != 0)
      return CalculateUnplanned(values, names, error);
    content_ = Content::kFormulaAndPlan;
    return value;
  }

  // The value of a text that is no part of this engine's formula, by the same rules; 0 if it fails.
  double CalculateAside(TextView formula, const CMapValue& values, const CValidParameter& names);

  // Parses a text; -1, or where it failed. Parsed() holds the outcome until the next call of any kind.
  int Parse(TextView text, const CValidParameter& names);
  CExpression& Parsed() { return expression_; }

  KeywordMemory known_keywords;

 private:
  enum class Content : std::uint8_t { kWritten, kFormula, kFormulaAndPlaces, kFormulaAndPlan };

  [[gnu::noinline]] void SetOtherText(LPCTSTR typed, bool& too_long);
  [[gnu::noinline]] double CalculateUnplanned(const CMapValue& values, const CValidParameter& names,
                                              int& error);
  double CalculateSingly(const CMapValue& values, const CValidParameter& names, int& error);
  double CalculateText(const CMapValue& values, const CValidParameter& names, int& error);
  bool EvaluateDirectly(const CMapValue& values, double& value);
  int Substitute(const CMapValue& values, const CValidParameter& names);
  bool SubstituteZeros(const CMapValue& values);

  Content content_ = Content::kWritten;
  GrowingEdit formula_;
  // Grows where values are longer than their names: nothing is cut here. Read through WorkingText() alone.
  GrowingEdit working_;
  RepeatedFormula repeated_;
  ValuePlaces places_;
  CExpression expression_;  // made anew for each use, its storage kept
};

// The names of a list of the form "A,B,", in order, one after the other.
template <class Take>
void ForEachListedName(const CString& list, Take take) {
  int start = 0;
  for (int comma = list.Find(',', 1); comma >= 0; comma = list.Find(',', start + 1)) {
    take(list.Mid(start, comma - start));
    start = comma + 1;
  }
}

}  // namespace lorv
