#include <algorithm>

#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/grid_control.h"

// How rows with others nested in them come into the table and leave it.

int CBCGPGridCtrl::PutBeside(CBCGPGridRow& sibling, int step, CBCGPGridRow* row, BOOL relayout) {
  CBCGPGridRow* const parent = sibling.parent_;
  const int index = IndexOfRow(sibling) + (step == 0 ? 0 : 1 + sibling.GetAllSubItemsCount());
  if (parent == nullptr) return PutRow(index, row, relayout);
  if (!parent->TakesSubItem(row)) return -1;
  parent->Nest(*row, parent->PlaceOf(sibling) + step);
  PutAndReport(index, *row);
  if (relayout != FALSE) AdjustLayout();
  return index;
}

int CBCGPGridCtrl::PutSubRow(CBCGPGridRow& parent, CBCGPGridRow* row, BOOL relayout) {
  const int place = parent.GetSubItemsCount();
  const int index = IndexOfRow(parent) + parent.GetAllSubItemsCount() + 1;
  parent.Nest(*row, place);
  PutAndReport(index, *row);
  if (relayout != FALSE) AdjustLayout();
  return place;
}

void CBCGPGridCtrl::PutTree(int index, CBCGPGridRow& row) {
  PutOne(index, row);
  int next = index + 1;
  for (int i = 0; i < row.GetSubItemsCount(); ++i) {
    CBCGPGridRow& below = *row.GetSubItem(i);
    PutTree(next, below);
    next += 1 + below.GetAllSubItemsCount();
  }
}

void CBCGPGridCtrl::PutOne(int index, CBCGPGridRow& row) {
  if (!merged_.IsEmpty()) changes_.ReportMerging(merged_.Blocks());
  row.owner_ = this;
  rows_.Insert(index, row);
  if (cells_ != nullptr) cells_->RowsMoved();
  CountLevel(row, 1);
  if (row.GetLinesNumber() > 1) ++height_notes_.tall_rows;
  // Without height first: the groups around grow by the row, not by its pixels. Behind the last row that
  // needs no line yet, which would part those that are alike.
  if (!heights_.Groups().IsEmpty() || index < heights_.RowCount()) heights_.Insert(index, 0);
  const int height = HeightOf(row);
  // Who was asked whether the row is left out may have made a layout.
  if (index < heights_.RowCount())
    heights_.SetSize(index, height);
  else
    heights_.Insert(index, height);
  selection_.InsertRows(index, 1);
  merged_.InsertRows(index, 1);
  if (current_.m_nRow >= index) ++current_.m_nRow;
  if (anchor_.m_nRow >= index) ++anchor_.m_nRow;
}

void CBCGPGridCtrl::TakeTree(int index) {
  CBCGPGridRow* const row = rows_.At(index);
  // From the end, so that the numbers before it stay.
  for (int last = index + row->GetAllSubItemsCount(); last >= index; --last) TakeOne(last);
  row->LeaveParent();
}

void CBCGPGridCtrl::TakeOne(int index) {
  if (!merged_.IsEmpty()) changes_.ReportMerging(merged_.Blocks());
  CBCGPGridRow* const row = rows_.Take(index);
  if (cells_ != nullptr) cells_->RowsMoved();
  CountLevel(*row, -1);
  row->owner_ = nullptr;
  // Its edit is being ended: nobody is notified of a cell that is gone.
  if (ended_ != nullptr && ended_->GetParentRow() == row) ended_ = nullptr;
  if (row->GetLinesNumber() > 1) --height_notes_.tall_rows;
  heights_.Remove(index, [this](int group) { GroupGone(group); });
  selection_.RemoveRows(index, 1);
  merged_.RemoveRows(index, 1);
  KeepCurrentWithRows(index, 1);
}

void CBCGPGridCtrl::CountLevel(const CBCGPGridRow& row, int step) {
  if (row.parent_ == nullptr) return;
  const auto level = static_cast<std::size_t>(row.GetLevel());
  if (nested_at_.size() < level) nested_at_.resize(level);
  nested_at_[level - 1] += step;
  // As many entries as there are levels in use: they are the steps of the room at the left.
  while (!nested_at_.empty() && nested_at_.back() == 0) nested_at_.pop_back();
}

bool CBCGPGridCtrl::EditsIn(const CBCGPGridRow& row) const {
  return editing_ != nullptr && row.Holds(editing_->GetParentRow());
}

void CBCGPGridCtrl::RowExpanded(CBCGPGridRow& row, BOOL relayout) {
  const int group = row.IsGroup() != FALSE ? IndexOfRow(row) - rows_.Size() : -1;
  if (group >= 0) heights_.Groups().Expand(group, row.IsExpanded() != FALSE);
  if (row.IsExpanded() == FALSE && row.HasSubItems() != FALSE) {
    const int index = IndexOfRow(row);
    // A current cell that nobody sees would be typed into.
    const bool inside = current_.m_nRow > index && current_.m_nRow <= index + row.GetAllSubItemsCount();
    const CBCGPGridItemID out(index, current_.m_nColumn);
    const auto life = life_.Watch();
    if (inside) SetCurSel(out);
    if (life.expired()) return;
  }
  if (relayout != FALSE) AdjustLayout();
}

namespace {

void Flatten(CBCGPGridRow& row, std::vector<CBCGPGridRow*>& order) {
  order.push_back(&row);
  for (int i = 0; i < row.GetSubItemsCount(); ++i) Flatten(*row.GetSubItem(i), order);
}

}  // namespace

void CBCGPGridCtrl::ArrangeRows(const std::function<void(RowList&)>& arrange) {
  RowList main;
  main.reserve(static_cast<std::size_t>(rows_.Size()));
  rows_.ForEach([&](CBCGPGridRow& row) {
    if (row.parent_ == nullptr) main.push_back(&row);
    if (row.HasSubItems() != FALSE) arrange(row.sub_->rows);
  });
  CBCGPGridRow* const last = switches_.keeps_last_row && !main.empty() ? main.back() : nullptr;
  // Kept out of the comparison, which would put it in the middle.
  if (last != nullptr) main.pop_back();
  arrange(main);
  if (last != nullptr) main.push_back(last);
  // Most tables have no rows within rows, and need no second list.
  if (nested_at_.empty()) {
    rows_.Arrange(main);
    return;
  }
  std::vector<CBCGPGridRow*> order;
  order.reserve(static_cast<std::size_t>(rows_.Size()));
  for (CBCGPGridRow* row : main) Flatten(*row, order);
  rows_.Arrange(order);
}
