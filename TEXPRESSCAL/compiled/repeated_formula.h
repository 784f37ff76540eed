#pragma once

#include <cstdint>
#include <vector>

#include "TEXPRESSCAL/compiled/formula_plan.h"
#include "TEXPRESSCAL/map_value.h"
#include "TEXPRESSCAL/simd/typed_text.h"
#include "TEXPRESSCAL/text/text_edit.h"

namespace lorv {

// Notices that one formula is worked again and again with values of the same names, and then works it by a
// plan. A formula that comes once costs nothing here, one that comes twice in a row is planned.
class RepeatedFormula {
 public:
  // Another formula has been set.
  void Forget() {
    seen_ = tried_ = planned_ = false;
    planned_layout_ = kNoLayout;
    thirds_state_ = ThirdsPlan::kNotTried;
    typed_.Forget();
  }

  // The formula as it was typed last: whether it is typed so again is quickly seen.
  bool IsTyped(LPCTSTR text) const { return typed_.Is(text); }
  void Remember(TextView typed) { typed_.Remember(typed); }

  // Whether the formula has a plan for these names, as far as a glance tells.
  bool IsPlannedFor(const CMapValue& values) const { return planned_layout_ == values.KnownLayout(); }
  // Works the plan for values of its names; false, with nothing changed, where one of them does not fit.
  bool WorkPlan(const CMapValue& values, double& result, int& error) {
    return plan_.Work(values, result, error);
  }

  // Works the formula (in capitals) even where a glance does not tell, or values are thirds; false, with
  // nothing changed, where the text has to be worked.
  bool Work(TextView formula, const CMapValue& values, double& result, int& error);

  // Writes the values of the last Work into a copy of the formula, as working the text does.
  void WriteValues(GrowingEdit& text) const;

  // The formula (in capitals), set for the second time or more, has been worked as a text.
  void Note(TextView formula, const CMapValue& values);

 private:
  bool HasSameNames(const CMapValue& values) { return layout_ == values.Layout() || CompareNames(values); }
  bool CompareNames(const CMapValue& values);
  bool WorkThirds(TextView formula, const CMapValue& values, double& result, int& error);

  TypedText typed_;
  FormulaPlan plan_;
  // For the values that do not fit: thirds stand in the text as divisions. Made when the first one comes.
  enum class ThirdsPlan { kNotTried, kNone, kMade };
  FormulaPlan thirds_plan_;
  ThirdsPlan thirds_state_ = ThirdsPlan::kNotTried;
  std::vector<CStrCmp> names_;
  std::uint64_t layout_ = 0;  // of the map that was last found to have these names
  bool seen_ = false;         // names_ and layout_ are of the last work
  bool tried_ = false;
  bool planned_ = false;
  static constexpr std::uint64_t kNoLayout = ~std::uint64_t{0};
  std::uint64_t planned_layout_ = kNoLayout;  // layout_, once there is a plan
};

}  // namespace lorv
