#include "TEXPRESSCAL/compiled/repeated_formula.h"

#include <algorithm>

#include "TEXPRESSCAL/values/substitution.h"

namespace lorv {

bool RepeatedFormula::CompareNames(const CMapValue& values) {
  const auto same = [](const CStrCmp& name, const CMapValue::value_type& entry) {
    return CompareExact(static_cast<LPCTSTR>(name), static_cast<LPCTSTR>(entry.first)) == 0;
  };
  if (!std::equal(names_.begin(), names_.end(), values.begin(), values.end(), same)) return false;
  layout_ = values.Layout();
  return true;
}

void RepeatedFormula::WriteValues(GrowingEdit& text) const {
  const double* value = plan_.Values();
  for (const FormulaPlan::Slot& slot : plan_.Slots())
    SubstituteValue(text, static_cast<LPCTSTR>(names_[slot.entry]), *value++);
}

bool RepeatedFormula::Work(TextView formula, const CMapValue& values, double& result, int& error) {
  if (!planned_ || !HasSameNames(values)) return false;
  planned_layout_ = layout_;
  return plan_.Work(values, result, error) || WorkThirds(formula, values, result, error);
}

bool RepeatedFormula::WorkThirds(TextView formula, const CMapValue& values, double& result, int& error) {
  if (thirds_state_ == ThirdsPlan::kNotTried) {
    const bool made = thirds_plan_.Make(formula, values, FormulaPlan::Thirds::kFit);
    thirds_state_ = made ? ThirdsPlan::kMade : ThirdsPlan::kNone;
  }
  return thirds_state_ == ThirdsPlan::kMade && thirds_plan_.Work(values, result, error);
}

void RepeatedFormula::Note(TextView formula, const CMapValue& values) {
  if (seen_ && HasSameNames(values)) {
    // Tried before: there is no plan, or one of the values did not fit it.
    if (!tried_) planned_ = plan_.Make(formula, values);
    tried_ = true;
    return;
  }
  seen_ = true;
  tried_ = planned_ = false;
  planned_layout_ = kNoLayout;
  thirds_state_ = ThirdsPlan::kNotTried;
  names_.clear();
  for (const auto& [name, value] : values) names_.push_back(name);
  layout_ = values.Layout();
}

}  // namespace lorv
