#include <algorithm>
#include <cmath>
#include <typeinfo>
#include <unordered_set>

#include "gridcore/control/grid_control.h"

// The table of a grid: its columns and rows, and what moves when they come and go.

int CBCGPGridCtrl::InsertColumn(int column, LPCTSTR name, int width, int align, BOOL redraw) {
  if (GetColumnsInfo().InsertColumn(column, name, width, align) == FALSE) return FALSE;
  changes_.ReportReplaced();
  selection_.InsertColumns(column, 1);
  merged_.InsertColumns(column, 1);
  if (current_.m_nColumn >= column) ++current_.m_nColumn;
  if (anchor_.m_nColumn >= column) ++anchor_.m_nColumn;
  GroupColumnsMove(column, 1);
  FilterColumnsMove(column, 1);
  if (sort_.column >= column) ++sort_.column;
  if (rows_.IsVirtual()) rows_.Virtual()->Forget();
  if (redraw != FALSE) AdjustLayout();
  return TRUE;
}

int CBCGPGridCtrl::DeleteColumn(int column) {
  if (!GetColumnsInfo().HasColumn(column)) return FALSE;
  const auto life = life_.Watch();
  EndEditItem(FALSE);
  // And their columns: the cell of an editor would stand in none.
  if (life.expired() || !CloseEditors() || GetColumnsInfo().DeleteColumn(column) == FALSE) return FALSE;
  changes_.ReportReplaced();
  selection_.RemoveColumns(column, 1);
  merged_.RemoveColumns(column, 1);
  for (CBCGPGridItemID* cell : {&current_, &anchor_}) {
    if (cell->m_nColumn == column)
      cell->SetNull();
    else if (cell->m_nColumn > column)
      --cell->m_nColumn;
  }
  GroupColumnsMove(column, -1);
  FilterColumnsMove(column, -1);
  if (sort_.column == column) RemoveSortColumn();
  if (sort_.column > column) --sort_.column;
  if (rows_.IsVirtual()) rows_.Virtual()->Forget();
  AdjustLayout();
  return TRUE;
}

void CBCGPGridCtrl::SetColumnWidth(int column, int width) {
  GetColumnsInfo().SetColumnWidth(column, width);
}

void CBCGPGridCtrl::SetColumnVisible(int column, BOOL visible) {
  GetColumnsInfo().SetColumnVisible(column, visible);
}

void CBCGPGridCtrl::SetColumnName(int column, LPCTSTR name) {
  GetColumnsInfo().SetColumnName(column, name);
  Invalidate(FALSE);
}

void CBCGPGridCtrl::SetItemRTC(int column, const CRuntimeClass* item_class) {
  GetColumnsInfo().SetItemRTC(column, item_class);
}

CBCGPGridRow* CBCGPGridCtrl::CreateRow(int columns) {
  auto row = std::make_unique<CBCGPGridRow>(columns);
  SetupRow(row.get(), columns);
  return row.release();
}

CBCGPGridRow* CBCGPGridCtrl::CreateMultiLineRow(int lines) {
  CBCGPGridRow* row = CreateRow(GetColumnCount());
  row->SetLinesNumber(lines, FALSE);
  return row;
}

void CBCGPGridCtrl::SetupRow(CBCGPGridRow* row, int columns) {
  if (row == nullptr) return;
  // The row is not in the table yet, but its cells ask for the classes of the columns.
  CBCGPGridCtrl* const before = std::exchange(row->owner_, this);
  row->AddItems(GetRowCount(), columns);
  row->owner_ = before;
}

int CBCGPGridCtrl::AddRow(BOOL relayout) {
  CBCGPGridRow* const row = CreateRow(GetColumnCount());
  const int added = PutRow(rows_.Size(), row, relayout);
  // Refused, it is still nobody's.
  if (added < 0) delete row;
  return added;
}

int CBCGPGridCtrl::AddRow(CBCGPGridRow* row, BOOL relayout) {
  return PutRow(rows_.Size(), row, relayout);
}

int CBCGPGridCtrl::InsertRowBefore(int position, CBCGPGridRow* row, BOOL relayout) {
  CBCGPGridRow* const there = rows_.At(position);
  return there == nullptr ? -1 : PutBeside(*there, 0, row, relayout);
}

int CBCGPGridCtrl::InsertRowAfter(int position, CBCGPGridRow* row, BOOL relayout) {
  if (position < 0) return -1;
  CBCGPGridRow* const there = rows_.At(position);
  return there == nullptr ? PutRow(rows_.Size(), row, relayout) : PutBeside(*there, 1, row, relayout);
}

int CBCGPGridCtrl::PutRow(int index, CBCGPGridRow* row, BOOL relayout) {
  if (row == nullptr || row->owner_ != nullptr || row->parent_ != nullptr || rows_.IsVirtual()) return -1;
  PutAndReport(index, *row);
  if (relayout != FALSE) AdjustLayout();
  return index;
}

int CBCGPGridCtrl::RemoveRow(int position, BOOL relayout) {
  CBCGPGridRow* const row = rows_.IsVirtual() ? nullptr : rows_.At(position);
  if (row == nullptr) return 0;
  // Handlers may have opened it again while it closed: such a row stays.
  if (!CloseEditorIn(*row) || EditsIn(*row)) return 0;
  {
    // Merged cells may change along with it.
    const lorv::StepScope step(changes_);
    const lorv::RowPlace place = PlaceOfRow(*row, position);
    TakeTree(position);
    changes_.ReportRemoved(place, std::unique_ptr<CBCGPGridRow>(row));
  }
  if (relayout != FALSE) AdjustLayout();
  return 1;
}

void CBCGPGridCtrl::KeepCurrentWithRows(int first, int count) {
  for (CBCGPGridItemID* cell : {&current_, &anchor_}) {
    if (cell->m_nRow < first) continue;
    if (cell->m_nRow < first + count)
      cell->SetNull();
    else
      cell->m_nRow -= count;
  }
}

void CBCGPGridCtrl::RemoveAll(BOOL relayout) {
  const auto life = life_.Watch();
  // Handlers that open an editor whenever one closes keep their rows.
  if (!CloseEditors()) return;
  CloseEditor();
  ended_ = nullptr;
  changes_.ReportReplaced();
  std::vector<CBCGPGridRow*> rows;
  rows.reserve(static_cast<std::size_t>(rows_.Size()));
  // Rows without an owner report their end to nobody; nested ones go with those that hold them.
  rows_.ForEach([&](CBCGPGridRow& row) {
    row.owner_ = nullptr;
    if (row.parent_ == nullptr) rows.push_back(&row);
  });
  rows_.Clear();
  if (rows_.IsVirtual()) rows_.Virtual()->Resize(0);
  ForgetGroups();
  heights_.Clear();
  height_notes_.tall_rows = 0;
  nested_at_.clear();
  selection_.Clear();
  merged_.Clear();
  current_.SetNull();
  anchor_.SetNull();
  for (const CBCGPGridRow* row : rows) delete row;
  m_nVertScrollOffset = 0;
  if (relayout != FALSE) AdjustLayout();
}

int CBCGPGridCtrl::GetRowCount(BOOL /*all*/) const {
  return rows_.Size();
}

CBCGPGridItem* CBCGPGridCtrl::GetGridItem(const CBCGPGridItemID& id) const {
  const CBCGPGridRow* row = rows_.At(id.m_nRow);
  return row == nullptr || !GetColumnsInfo().HasColumn(id.m_nColumn) ? nullptr : row->GetItem(id.m_nColumn);
}

void CBCGPGridCtrl::PrepareRemoveRow(int position, std::vector<CBCGPGridItem*>& items,
                                     std::vector<CBCGPGridRow*>& rows) {
  CBCGPGridRow* const row = rows_.IsVirtual() ? nullptr : rows_.At(position);
  // The row that waits to be typed into is never taken away by numbers.
  if (switches_.keeps_last_row && position == rows_.Size() - 1) return;
  if (row == nullptr || std::find(rows.begin(), rows.end(), row) != rows.end()) return;
  rows.push_back(row);
  for (int column = 0; column < row->GetItemCount(); ++column) items.push_back(row->GetItem(column));
}

// Rows are named by their objects here: numbers would change with each one that goes.
int CBCGPGridCtrl::DoRemoveRows(std::vector<CBCGPGridItem*>& items, std::vector<CBCGPGridRow*>& rows) {
  int done = 0;
  const auto life = life_.Watch();
  CBCGPGridRow* const edited = editing_ == nullptr ? nullptr : editing_->GetParentRow();
  const auto holds_it = [edited](const CBCGPGridRow* row) { return row->Holds(edited); };
  if (edited != nullptr && std::any_of(rows.begin(), rows.end(), holds_it)) CloseEditor();
  if (life.expired()) return 0;
  // An editor that closes runs handlers, which may have taken rows of the list away themselves.
  const std::unordered_set<const CBCGPGridRow*> listed(rows.begin(), rows.end());
  std::unordered_set<const CBCGPGridRow*> there;
  rows_.ForEach([&](const CBCGPGridRow& row) {
    if (listed.count(&row) != 0) there.insert(&row);
  });
  for (CBCGPGridRow* row : rows) {
    if (there.count(row) == 0) continue;
    // What is nested in it goes along, and may be on the list itself.
    const int index = IndexOfRow(*row);
    for (int below = index; below <= index + row->GetAllSubItemsCount(); ++below)
      there.erase(rows_.At(below));
    done += RemoveRow(index, FALSE);
  }
  // They name what is gone.
  items.clear();
  rows.clear();
  return done;
}

int CBCGPGridCtrl::ClearRange(const CBCGPGridRange& range, BOOL redraw, BOOL report, void* /*always_null*/) {
  // The values of a virtual table are somebody else's.
  if (!range.IsValid() || rows_.IsVirtual()) return 0;
  int done = 0;
  const int last_row = std::min(range.m_nBottom, rows_.Size() - 1);
  const int last_column = std::min(range.m_nRight, GetColumnCount() - 1);
  const auto life = life_.Watch();
  for (int row = range.m_nTop; row <= last_row; ++row)
    for (int column = range.m_nLeft; column <= last_column; ++column) {
      // Looked up anew: who hears of a change may rebuild the table, or end the grid.
      CBCGPGridRow* const there = rows_.At(row);
      if (there == nullptr) continue;
      if (report == FALSE && there->PutValue(column, _variant_t())) {
        ++done;
        continue;
      }
      CBCGPGridItem* item = there->GetItem(column);
      if (item == nullptr) continue;
      item->SetValue(_variant_t(), FALSE);
      ++done;
      if (report != FALSE) item->SetItemChanged();
      if (life.expired()) return done;
    }
  if (redraw != FALSE) InvalidateRange(range);
  return done;
}

void CBCGPGridCtrl::ItemGone(const CBCGPGridItem& item) {
  ++sort_.items_gone;
  if (ended_ == &item) ended_ = nullptr;
  if (editing_ == &item) CloseEditor();
}

// A row that a host deletes by itself leaves the table cleanly; an undo could not bring it back.
void CBCGPGridCtrl::RowGone(CBCGPGridRow& row) {
  if (EditsIn(row)) CloseEditor();
  const int index = rows_.IndexOf(row);
  if (index < 0) return;
  changes_.ReportReplaced();
  TakeTree(index);
}

void CBCGPGridCtrl::RowLinesChanged(const CBCGPGridRow& row, BOOL relayout) {
  const int index = rows_.IndexOf(row);
  if (index < 0) return;
  // That there are some is what matters here; the next layout counts them.
  if (row.GetLinesNumber() > 1) height_notes_.tall_rows = std::max(height_notes_.tall_rows, 1);
  if (relayout != FALSE)
    AdjustLayout();
  else
    heights_.SetSize(index, HeightOf(*rows_.At(index)));
}

namespace {

bool IsNumber(const _variant_t& value) {
  return lorv::IsPlainType(value.vt) && value.vt != VT_EMPTY && value.vt != VT_NULL && value.vt != VT_ERROR;
}

double NumberOf(const _variant_t& value) {
  VARIANT number = {};
  return lorv::ChangeValueType(number, value, VT_R8) == S_OK ? number.dblVal : 0;
}

// What the cell shows: where it stands for plain cells of texts, as a copy for every two that are compared
// would take most of the time to sort; else in `room`.
lorv::TextView ShownBy(const CBCGPGridItem* item, CString& room) {
  if (item == nullptr) return {};
  if (item->GetValue().vt == VT_BSTR && typeid(*item) == typeid(CBCGPGridItem))
    return lorv::TextOfBstr(item->GetValue().bstrVal);
  room = item->FormatItem();
  return room.View();
}

}  // namespace

int CBCGPGridCtrl::CompareItems(const CBCGPGridItem* a, const CBCGPGridItem* b) const {
  const bool a_number = a != nullptr && IsNumber(a->GetValue());
  const bool b_number = b != nullptr && IsNumber(b->GetValue());
  // Numbers before texts, and empty cells with the texts: an order that does not depend on where a row stood.
  if (a_number != b_number) return a_number ? -1 : 1;
  if (a_number) {
    const double left = NumberOf(a->GetValue());
    const double right = NumberOf(b->GetValue());
    // No number at all stands before the others, so that the order is one.
    if (std::isnan(left) || std::isnan(right))
      return (std::isnan(left) ? 0 : 1) - (std::isnan(right) ? 0 : 1);
    return left < right ? -1 : (left > right ? 1 : 0);
  }
  CString left_room;
  CString right_room;
  const int order = lorv::CompareExact(ShownBy(a, left_room), ShownBy(b, right_room));
  return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

void CBCGPGridCtrl::Sort(int column, BOOL ascending) {
  if (!GetColumnsInfo().HasColumn(column) || rows_.IsVirtual()) return;
  const auto life = life_.Watch();
  if (editing_ != nullptr) EndEditItem(TRUE);
  if (life.expired() || !GetColumnsInfo().HasColumn(column)) return;
  CBCGPGridRow* const current = GetCurSel();
  if (changes_.AreWatched()) changes_.ReportMoving(Arrangement());
  sort_.column = column;
  sort_.ascending = ascending != FALSE;
  ArrangeRows();
  regroup_wanted_ = regroup_wanted_ || !group_columns_.empty();
  FollowRow(current);
  AdjustLayout();
}

BOOL CBCGPGridCtrl::MergeRange(const CBCGPGridRange& range) {
  if (!range.IsValid() || range.m_nBottom >= rows_.Size() || range.m_nRight >= GetColumnCount()) return FALSE;
  // Blocks never overlap; one that would is refused rather than cut.
  if (!merged_.CanAdd(range)) return FALSE;
  changes_.ReportMerging(merged_.Blocks());
  merged_.Add(range);
  Invalidate(FALSE);
  return TRUE;
}

BOOL CBCGPGridCtrl::UnmergeAt(const CBCGPGridItemID& cell) {
  if (!merged_.BlockAt(cell).IsValid()) return FALSE;
  changes_.ReportMerging(merged_.Blocks());
  merged_.RemoveAt(cell);
  Invalidate(FALSE);
  return TRUE;
}

int CBCGPGridCtrl::GetMergedItemsInRange(const CBCGPGridRange& range,
                                         std::vector<CBCGPGridRange>& blocks) const {
  blocks = merged_.BlocksMeeting(range);
  return static_cast<int>(blocks.size());
}
