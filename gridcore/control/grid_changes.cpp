#include "gridcore/control/grid_changes.h"

#include <algorithm>
#include <utility>

#include "gridcore/control/grid_control.h"

// Observers of a grid, and the places in the grid's own work where they are notified.

namespace lorv {

void GridChanges::Add(GridObserver& observer) {
  if (std::find(observers_.begin(), observers_.end(), &observer) == observers_.end())
    observers_.push_back(&observer);
}

void GridChanges::Remove(GridObserver& observer) {
  std::replace(observers_.begin(), observers_.end(), &observer, static_cast<GridObserver*>(nullptr));
  if (reporting_ == 0) Sweep();
}

void GridChanges::Sweep() {
  std::erase(observers_, nullptr);
}

void GridChanges::ReportValue(CBCGPGridItem& item, _variant_t& before) {
  const ChangeBy by = by_;
  if (observers_.size() == 1) {
    ForEach([&](GridObserver& observer) { observer.OnValueChanged(item, before, by); });
    return;
  }
  // What one observer takes would not be there for the next one.
  ForEach([&](GridObserver& observer) {
    _variant_t copy = before;
    observer.OnValueChanged(item, copy, by);
  });
}

void GridChanges::ReportInserted(const RowPlace& place, CBCGPGridRow& row) {
  ForEach([&](GridObserver& observer) { observer.OnRowInserted(place, row); });
}

void GridChanges::ReportRemoved(const RowPlace& place, std::unique_ptr<CBCGPGridRow> row) {
  ForEach([&](GridObserver& observer) { observer.OnRowRemoved(place, row); });
}

void GridChanges::ReportMoving(RowArrangement now) {
  ForEach([&](GridObserver& observer) { observer.OnRowsMoving(now); });
}

void GridChanges::ReportMerging(const std::vector<CBCGPGridRange>& now) {
  ForEach([&](GridObserver& observer) { observer.OnMergesChanging(now); });
}

StepScope::StepScope(GridChanges& changes, const CBCGPGridItem* subject, StepKind kind) : changes_(changes) {
  if (!changes.AreWatched()) return;
  life_ = changes.life_.Watch();
  changes_.ForEach([=](GridObserver& observer) { observer.OnStepBegins(kind, subject); });
}

StepScope::~StepScope() {
  if (life_.expired()) return;
  changes_.ForEach([](GridObserver& observer) { observer.OnStepEnds(); });
}

}  // namespace lorv

lorv::GridChanges* CBCGPGridItem::Watchers() const {
  CBCGPGridCtrl* const owner = GetOwnerList();
  // A row that is still being made stands in no list.
  if (owner == nullptr || !owner->Changes().AreWatched() || row_->list_place.block == nullptr) return nullptr;
  if (owner->IsVirtualMode() != FALSE) return nullptr;
  return &owner->Changes();
}

void CBCGPGridItem::PutValue(_variant_t&& value) {
  _variant_t before = std::exchange(value_, std::move(value));
  if (lorv::GridChanges* const watchers = Watchers()) watchers->ReportValue(*this, before);
}

void CBCGPGridItem::LooksChange() {
  lorv::GridChanges* const watchers = Watchers();
  if (watchers != nullptr && watchers->By() != lorv::ChangeBy::kSelection)
    watchers->ForEach([this](lorv::GridObserver& observer) { observer.OnLooksChanging(*this); });
}

lorv::RowPlace CBCGPGridCtrl::PlaceOfRow(const CBCGPGridRow& row, int index) const {
  return {index, row.parent_, row.parent_ == nullptr ? 0 : row.parent_->PlaceOf(row)};
}

void CBCGPGridCtrl::PutAndReport(int index, CBCGPGridRow& row) {
  // Merged cells may change along with it.
  const lorv::StepScope step(changes_);
  PutTree(index, row);
  if (changes_.AreWatched()) changes_.ReportInserted(PlaceOfRow(row, index), row);
}

lorv::RowArrangement CBCGPGridCtrl::Arrangement() {
  lorv::RowArrangement now;
  now.rows.reserve(static_cast<std::size_t>(rows_.Size()));
  rows_.ForEach([&](CBCGPGridRow& row) { now.rows.push_back(&row); });
  now.sort_column = sort_.column;
  now.ascending = sort_.ascending;
  now.group_columns = group_columns_;
  return now;
}
