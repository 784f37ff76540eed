#include "TEXPRESSCAL/repeated_formula.h"

#include <algorithm>

#include "TEXPRESSCAL/substitution.h"

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

bool RepeatedFormula::WorkVariant(TextView formula, const CMapValue& values, double& result, int& error) {
  if (plan_.Slots().size() > kMaxVariantValues) return false;
  std::uint64_t thirds = 0;
  for (const FormulaPlan::Slot& slot : plan_.Slots()) {
    const double value = (values.begin() + static_cast<std::ptrdiff_t>(slot.entry))->second;
    thirds = thirds << 2 | static_cast<std::uint64_t>(ThirdsOf(value));
  }
  if (thirds == 0) return false;
  auto variant =
      std::find_if(variants_.begin(), variants_.end(), [=](const Variant& v) { return v.thirds == thirds; });
  if (variant == variants_.end()) {
    if (variants_.size() == kMaxVariants) return false;
    variant = variants_.insert(variants_.end(), {thirds, false, {}});
    variant->is_planned = variant->plan.Make(formula, values, FormulaPlan::Thirds::kWritten);
  }
  return variant->is_planned && variant->plan.Work(values, result, error);
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
  variants_.clear();
  names_.clear();
  for (const auto& [name, value] : values) names_.push_back(name);
  layout_ = values.Layout();
}

}  // namespace lorv
