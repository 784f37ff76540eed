#pragma once

#include <cstdint>
#include <vector>

#include "TEXPRESSCAL/compiled/formula_plan.h"
#include "TEXPRESSCAL/map_value.h"
#include "TEXPRESSCAL/simd/typed_text.h"
#include "TEXPRESSCAL/text/text_edit.h"

namespace lorv {

// Notices that one formula is evaluated again and again with values of the same names, and then evaluates it
// by a plan. A formula that comes once costs nothing here; the third evaluation makes the plan, the fourth
// one uses it.
//
//   kSetOnce     --- SetAgain() --------------------------------> kSetAgain
//   kSetAgain    --- Observe() ---------------------------------> kObserved
//   kObserved    --- Observe(), same names ---------------------> kPlanned or kUnplannable
//   kPlanned     --- Evaluate(), a third among the values ------> kPlannedThirds or kPlannedNoThirds
//   any but kSetOnce --- Observe(), other names ----------------> kObserved
//   any          --- Forget() ----------------------------------> kSetOnce
class RepeatedFormula {
 public:
  // Another formula has been set.
  void Forget() {
    stage_ = Stage::kSetOnce;
    planned_layout_ = kNoLayout;
    typed_.Forget();
  }

  // The formula was set again, typed like this. An empty text is not remembered.
  void SetAgain(TextView typed) {
    if (stage_ == Stage::kSetOnce) stage_ = Stage::kSetAgain;
    typed_.Remember(typed);
  }
  bool IsSetAgain() const { return stage_ != Stage::kSetOnce; }
  // Whether a text is typed like the formula was when it was set again last: seen quickly.
  bool IsTyped(LPCTSTR text) const { return typed_.Is(text); }

  // Whether the formula has a plan for these names, as far as a first look at it shows.
  bool IsPlannedFor(const CMapValue& values) const { return planned_layout_ == values.KnownLayout(); }
  // Evaluates the plan with values of its names; false, with nothing changed, where one of them does not fit.
  bool EvaluatePlan(const CMapValue& values, double& result, int& error) {
    return plan_.Evaluate(values, result, error);
  }

  // Evaluates the formula (in capitals) even where a first look does not show it, or values are thirds;
  // false, with nothing changed, where the text has to be evaluated.
  bool Evaluate(TextView formula, const CMapValue& values, double& result, int& error);

  // Writes the values of the last evaluation into a copy of the formula, as the substitution does.
  void WriteValues(GrowingEdit& text) const;

  // The formula (in capitals), set for the second time or more, has been evaluated as a text.
  void Observe(TextView formula, const CMapValue& values);

 private:
  // In this order: what has a plan comes last.
  enum class Stage : std::uint8_t {
    kSetOnce,
    kSetAgain,         // nothing is known of the names
    kObserved,         // evaluated as a text with names_
    kUnplannable,      // there is no plan for names_
    kPlanned,          // there is one
    kPlannedThirds,    // and one for thirds
    kPlannedNoThirds,  // but none for thirds
  };

  bool HasSameNames(const CMapValue& values) { return layout_ == values.Layout() || CompareNames(values); }
  bool CompareNames(const CMapValue& values);
  void RememberNames(const CMapValue& values);
  bool EvaluateThirds(TextView formula, const CMapValue& values, double& result, int& error);

  static constexpr std::uint64_t kNoLayout = ~std::uint64_t{0};

  Stage stage_ = Stage::kSetOnce;
  TypedText typed_;
  FormulaPlan plan_;
  // For the values that do not fit the plan: thirds stand in the text as divisions.
  FormulaPlan thirds_plan_;
  std::vector<CStrCmp> names_;
  std::uint64_t layout_ = 0;  // of the map that was last found to have names_
  // layout_ from kPlanned on, else kNoLayout: so one comparison shows whether the plan can be used.
  std::uint64_t planned_layout_ = kNoLayout;
};

}  // namespace lorv
