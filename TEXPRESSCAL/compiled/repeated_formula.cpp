#include "TEXPRESSCAL/compiled/repeated_formula.h"

#include <algorithm>

#include "TEXPRESSCAL/values/substitution.h"

// Notices repetition: the same formula set again, with values of the same names, gets a plan. Its stages are
// drawn in the header. A plan is used only while the names are the very ones that it was made for; the layout
// number of the map answers that mostly without a comparison.

namespace lorv {

// Layouts differ between maps of the same names when these were stored at different times; the names decide.
bool RepeatedFormula::CompareNames(const CMapValue& values) {
  const auto same = [](const CStrCmp& name, const CMapValue::value_type& entry) {
    return CompareExact(static_cast<LPCTSTR>(name), static_cast<LPCTSTR>(entry.first)) == 0;
  };
  if (!std::equal(names_.begin(), names_.end(), values.begin(), values.end(), same)) return false;
  // From now on the number alone answers for this map.
  layout_ = values.Layout();
  return true;
}

// The values are those of plan_ in every case: it reads them even where one does not fit and thirds_plan_
// takes over.
void RepeatedFormula::WriteValues(GrowingEdit& text) const {
  const double* value = plan_.Values();
  for (const FormulaPlan::Slot& slot : plan_.Slots())
    SubstituteValue(text, static_cast<LPCTSTR>(names_[slot.entry]), *value++);
}

bool RepeatedFormula::Evaluate(TextView formula, const CMapValue& values, double& result, int& error) {
  if (stage_ < Stage::kPlanned || !HasSameNames(values)) return false;
  planned_layout_ = layout_;
  return plan_.Evaluate(values, result, error) || EvaluateThirds(formula, values, result, error);
}

bool RepeatedFormula::EvaluateThirds(TextView formula, const CMapValue& values, double& result, int& error) {
  // Made at the first third that comes: most formulas never see one.
  if (stage_ == Stage::kPlanned) {
    const bool made = thirds_plan_.Make(formula, values, FormulaPlan::Thirds::kFit);
    stage_ = made ? Stage::kPlannedThirds : Stage::kPlannedNoThirds;
  }
  return stage_ == Stage::kPlannedThirds && thirds_plan_.Evaluate(values, result, error);
}

void RepeatedFormula::Observe(TextView formula, const CMapValue& values) {
  if (stage_ < Stage::kObserved || !HasSameNames(values)) return RememberNames(values);
  // Later stages stay: there is no plan, or one of the values did not fit it.
  if (stage_ == Stage::kObserved)
    stage_ = plan_.Make(formula, values) ? Stage::kPlanned : Stage::kUnplannable;
}

void RepeatedFormula::RememberNames(const CMapValue& values) {
  stage_ = Stage::kObserved;
  planned_layout_ = kNoLayout;
  names_.clear();
  for (const auto& [name, value] : values) names_.push_back(name);
  layout_ = values.Layout();
}

}  // namespace lorv
