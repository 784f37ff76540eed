#include <algorithm>
#include <utility>

#include "gridcore/control/grid_control.h"

// Virtual mode: the rows are somebody else's, and a call-back fills those that are asked for.

BOOL CBCGPGridCtrl::EnableVirtualMode(VirtualFill fill) {
  // A call-back that ends the mode would end itself.
  if (rows_.IsVirtual() && rows_.Virtual()->IsMaking()) return FALSE;
  const auto life = life_.Watch();
  RemoveAll(FALSE);
  if (life.expired() || (rows_.Size() > 0 && !rows_.IsVirtual())) return FALSE;
  ForgetGroups();
  heights_.Clear();
  group_columns_.clear();
  sort_.column = -1;
  virtual_fill_ = std::move(fill);
  if (virtual_fill_ == nullptr) {
    rows_.SetVirtual(nullptr);
    return TRUE;
  }
  const auto make = [this](int index) {
    auto row = std::make_unique<CBCGPGridRow>(GetColumnCount());
    row->owner_ = this;
    // Cells are made as their columns ask for them, and filled in the order that nobody has moved.
    const CBCGPGridColumnsInfo& info = GetColumnsInfo();
    if (info.AreColumnsMoved())
      for (int number = 0; number < GetColumnCount(); ++number)
        row->AddItem(row->CreateItem(index, info.FindUnmovedColumn(number)));
    else
      row->AddItems(index, GetColumnCount());
    virtual_fill_(*row, index);
    if (info.AreColumnsMoved()) row->ArrangeItems(info);
    return row;
  };
  const auto in_use = [this](const CBCGPGridRow& row) {
    return EditsIn(row) || (ended_ != nullptr && ended_->GetParentRow() == &row);
  };
  // Rows without an owner report their end to nobody.
  const auto leave = [this](CBCGPGridRow& row) {
    if (ended_ != nullptr && ended_->GetParentRow() == &row) ended_ = nullptr;
    row.owner_ = nullptr;
  };
  rows_.SetVirtual(std::make_unique<lorv::VirtualRows>(make, in_use, leave));
  return TRUE;
}

void CBCGPGridCtrl::SetVirtualRows(int count) {
  if (!rows_.IsVirtual()) return;
  const auto life = life_.Watch();
  RefreshVirtualRows();
  if (life.expired() || !rows_.IsVirtual()) return;
  rows_.Virtual()->Resize(std::min(count, lorv::kMaxVirtualTable));
  if (current_.m_nRow >= rows_.Size()) current_.SetNull();
  if (anchor_.m_nRow >= rows_.Size()) anchor_.SetNull();
  selection_.RemoveRows(rows_.Size(), lorv::kMaxVirtualTable);
  merged_.RemoveRows(rows_.Size(), lorv::kMaxVirtualTable);
  AdjustLayout();
}

CBCGPGridRow* CBCGPGridCtrl::GetVirtualRow(int position) const {
  return rows_.IsVirtual() ? rows_.At(position) : nullptr;
}

void CBCGPGridCtrl::RefreshVirtualRows() {
  if (!rows_.IsVirtual()) return;
  // A row whose editor handlers open again and again stays as it is.
  if (!CloseEditors() || !rows_.IsVirtual()) return;
  rows_.Virtual()->Forget();
  Invalidate(FALSE);
}

CBCGPGridRow* CBCGPGridCtrl::RowBehindTable(int position) const {
  return group_rows_.empty() ? nullptr : GetGroupRow(position - rows_.Size());
}

int CBCGPGridCtrl::IdOutsideTable(const CBCGPGridRow& row) const {
  return group_rows_.empty() ? -1 : GroupRowId(row);
}
