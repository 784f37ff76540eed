#include <algorithm>
#include <iterator>

#include "gridcore/control/grid_control.h"
#include "gridcore/rows/grid_row.h"

// Rows within rows. In the table they stand one behind the other: a row, then all that is nested in it. So a
// number finds a nested row as quickly as any other, and what is nested in a row is one stretch of numbers.

CBCGPGridRow* CBCGPGridRow::GetSubItem(int index) const {
  return index >= 0 && index < GetSubItemsCount() ? sub_->rows[static_cast<std::size_t>(index)] : nullptr;
}

int CBCGPGridRow::GetLevel() const {
  int level = 0;
  for (const CBCGPGridRow* row = parent_; row != nullptr; row = row->parent_) ++level;
  return level;
}

BOOL CBCGPGridRow::IsInCollapsed() const {
  for (const CBCGPGridRow* row = parent_; row != nullptr; row = row->parent_)
    if (row->IsExpanded() == FALSE) return TRUE;
  return FALSE;
}

bool CBCGPGridRow::Holds(const CBCGPGridRow* row) const {
  while (row != nullptr && row != this) row = row->parent_;
  return row == this;
}

CBCGPGridRow* CBCGPGridRow::FindSubItemById(int id) const {
  if (owner_ == nullptr || sub_ == nullptr) return nullptr;
  const int own = GetRowId();
  return id > own && id <= own + sub_->below ? owner_->CBCGPGridCtrl::GetRow(id) : nullptr;
}

namespace {

int LevelsOf(const CBCGPGridRow& row) {
  int deepest = 0;
  for (int i = 0; i < row.GetSubItemsCount(); ++i) deepest = std::max(deepest, LevelsOf(*row.GetSubItem(i)));
  return deepest + 1;
}

}  // namespace

bool CBCGPGridRow::TakesSubItem(const CBCGPGridRow* row) const {
  // A row is in one place only, and never within itself.
  if (row == nullptr || row->owner_ != nullptr || row->parent_ != nullptr) return false;
  if (owner_ != nullptr && owner_->IsVirtualMode() != FALSE) return false;
  if (IsGroup() != FALSE || row->IsGroup() != FALSE || row->Holds(this)) return false;
  return GetLevel() + 1 + LevelsOf(*row) <= lorv::kMaxRowLevels;
}

int CBCGPGridRow::AddSubItem(CBCGPGridRow* row, BOOL relayout) {
  if (!TakesSubItem(row)) return -1;
  const int place = GetSubItemsCount();
  if (owner_ != nullptr) return owner_->PutSubRow(*this, row, relayout);
  Nest(*row, place);
  return place;
}

int CBCGPGridRow::PlaceOf(const CBCGPGridRow& row) const {
  const auto found = std::find(sub_->rows.begin(), sub_->rows.end(), &row);
  return static_cast<int>(std::distance(sub_->rows.begin(), found));
}

void CBCGPGridRow::Nest(CBCGPGridRow& row, int place) {
  if (sub_ == nullptr) sub_ = std::make_unique<lorv::SubRows>();
  sub_->rows.insert(sub_->rows.begin() + place, &row);
  row.parent_ = this;
  GrowBelow(1 + row.GetAllSubItemsCount());
}

void CBCGPGridRow::LeaveParent() {
  if (parent_ == nullptr) return;
  std::erase(parent_->sub_->rows, this);
  parent_->GrowBelow(-1 - GetAllSubItemsCount());
  parent_ = nullptr;
}

void CBCGPGridRow::GrowBelow(int rows) {
  // Each row knows how many stand below it, so that its stretch of numbers is found without walking it.
  for (CBCGPGridRow* row = this; row != nullptr; row = row->parent_) row->sub_->below += rows;
}

void CBCGPGridRow::Expand(BOOL on, BOOL relayout) {
  if (on == IsExpanded()) return;
  if (sub_ == nullptr) sub_ = std::make_unique<lorv::SubRows>();
  sub_->expanded = on != FALSE;
  if (owner_ != nullptr) owner_->RowExpanded(*this, relayout);
}
