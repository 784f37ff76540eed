#include "gridcore/accessibility/grid_cells.h"

#include <algorithm>

#include "framework/windows/accessible_window.h"
#include "gridcore/columns/columns_info_ex.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/items/check_item.h"

// What a grid says of its cells. Everything is read from the grid when it is asked for: nothing here has to
// follow the table, and a reader never hears of what was there before.

namespace lorv {
namespace {

CBCGPGridItemID IdOf(CellAddress cell) {
  return {cell.row, cell.column};
}

// The column that the line of a group has its text in.
int FirstColumn(const CBCGPGridCtrl& grid) {
  return std::max(0, grid.GetColumnsInfo().GetFirstVisibleColumn());
}

void AddLine(CString& text, const CString& line) {
  if (line.IsEmpty()) return;
  if (!text.IsEmpty()) text += _T(' ');
  text += line;
}

// Headers are broken into lines for the eye alone.
CString OnOneLine(const CString& text) {
  CString line;
  for (int i = 0; i < text.GetLength(); ++i) {
    const TCHAR unit = text[i];
    const bool breaks = unit == _T('\r') || unit == _T('\n');
    if (!breaks)
      line += unit;
    else if (!line.IsEmpty() && line[line.GetLength() - 1] != _T(' '))
      line += _T(' ');
  }
  return line;
}

unsigned ExpandState(const CBCGPGridRow& row) {
  if (row.IsGroup() == FALSE && row.HasSubItems() == FALSE) return 0;
  return kAccessExpandable | (row.IsExpanded() != FALSE ? kAccessExpanded : 0);
}

}  // namespace

GridCells::GridCells(CBCGPGridCtrl& grid) : grid_(grid), count_(CellCount()) {
  Remember();
}

SIZE GridCells::CellCount() const {
  return {grid_.GetColumnCount(), grid_.GetTerminalRowCount() + grid_.GetGroupRowCount()};
}

CString GridCells::TableName() const {
  CString name;
  grid_.GetWindowText(name);
  // Hosts rarely name their grids: the label in front of one, as of other controls.
  return name.IsEmpty() ? AccessibleLabel(grid_.m_hWnd) : name;
}

CString GridCells::ColumnHeader(int column) const {
  const auto* lines = dynamic_cast<const CBCGPGridColumnsInfoEx*>(&grid_.GetColumnsInfo());
  CString name = OnOneLine(grid_.GetColumnName(column));
  if (lines == nullptr) return name;
  CString text;
  // A cell of the header that is several lines high is read once.
  const CBCGPGridHeaderItem* above = nullptr;
  for (int line = 0; line < lines->GetHeaderLineCount(); ++line) {
    const CBCGPGridHeaderItem* item = lines->GetHeaderItemAt(column, line);
    if (item != nullptr && item != above) AddLine(text, OnOneLine(item->text));
    above = item;
  }
  int first = 0;
  int last = 0;
  // The column's own name is read where it is seen, and where nothing else is.
  if (lines->GetOwnHeaderLines(column, first, last) || text.IsEmpty()) AddLine(text, name);
  return text;
}

CString GridCells::RowHeader(int row) const {
  if (IsGroupLine(row)) return CellText({row, FirstColumn(grid_)});
  CString text;
  text.Format(_T("%d"), row + 1);
  return text;
}

bool GridCells::IsGroupLine(int row) const {
  return row >= grid_.GetTerminalRowCount();
}

bool GridCells::IsCovered(CellAddress cell) const {
  return MainCell(cell) != cell;
}

CBCGPGridItem* GridCells::ItemAt(CellAddress cell) const {
  return grid_.GetGridItem(IdOf(cell));
}

CString GridCells::CellText(CellAddress cell) const {
  if (IsGroupLine(cell.row)) {
    // One text for the whole line: in each cell it would be read as often as there are columns.
    const CBCGPGridRow* row = grid_.GetRow(cell.row);
    if (row == nullptr || row->IsGroup() == FALSE || cell.column != FirstColumn(grid_)) return {};
    return static_cast<const GroupRow*>(row)->GetText();
  }
  const CBCGPGridItem* item = IsCovered(cell) ? nullptr : ItemAt(cell);
  return item == nullptr ? CString() : item->FormatItem();
}

bool GridCells::IsOutOfSight(CellAddress cell) const {
  const bool column_hidden = cell.column >= 0 && grid_.GetColumnVisible(cell.column) == FALSE;
  // A row has a rectangle wherever it is scrolled to, unless it is hidden.
  return column_hidden || (cell.row >= 0 && grid_.GetRowRect(cell.row).IsRectEmpty() != FALSE);
}

unsigned GridCells::HeaderState(CellAddress cell) const {
  const CBCGPGridRow* row = cell.row < 0 ? nullptr : grid_.GetRow(cell.row);
  return row == nullptr ? 0 : ExpandState(*row);
}

unsigned GridCells::ItemState(const CBCGPGridItem& item, CellAddress cell) const {
  unsigned state = kAccessFocusable | kAccessSelectable;
  if (cell == CurrentCell()) state |= kAccessFocused;
  if (grid_.IsItemSelected(IdOf(cell)) != FALSE) state |= kAccessSelected;
  if (item.IsEnabled() == FALSE || item.GetParentRow()->IsEnabled() == FALSE) state |= kAccessDisabled;
  if (grid_.IsEditableNow(&item) == FALSE) state |= kAccessReadOnly;
  if (const auto* check = dynamic_cast<const CBCGPGridCheckItem*>(&item))
    state |= kAccessCheckable | (check->IsOn() ? kAccessChecked : 0);
  // A row is expanded by its header; its first cell says so, where readers come by.
  if (cell.column == FirstColumn(grid_)) state |= ExpandState(*item.GetParentRow());
  return state;
}

unsigned GridCells::CellState(CellAddress cell) const {
  const unsigned hidden = IsOutOfSight(cell) ? kAccessHidden : 0;
  if (cell.row < 0 || cell.column < 0) return hidden | HeaderState(cell);
  if (IsGroupLine(cell.row)) {
    if (cell.column != FirstColumn(grid_)) return kAccessHidden | kAccessReadOnly;
    return hidden | kAccessReadOnly | HeaderState(cell);
  }
  const CBCGPGridItem* item = ItemAt(cell);
  if (item == nullptr || IsCovered(cell)) return kAccessHidden | kAccessReadOnly;
  return hidden | ItemState(*item, cell);
}

RECT GridCells::CellPlace(CellAddress cell) const {
  if (IsOutOfSight(cell)) return CRect();
  const CRect& header = grid_.GetHeaderRect();
  const CRect& beside = grid_.GetRowHeaderRect();
  const CRect& list = grid_.GetListRect();
  CRect place;
  if (cell.row < 0 && cell.column < 0) {
    place = CRect(beside.left, header.top, header.left, header.bottom);
  } else if (cell.row < 0) {
    place = header & grid_.GetColumnRect(cell.column);
  } else if (cell.column < 0) {
    const CRect row = grid_.GetRowRect(cell.row);
    place = beside & CRect(beside.left, row.top, beside.right, row.bottom);
  } else if (IsGroupLine(cell.row)) {
    place = cell.column == FirstColumn(grid_) ? grid_.GetRowRect(cell.row) & list : CRect();
  } else if (!IsCovered(cell)) {
    place = grid_.GetItemRect(IdOf(cell)) & list;
  }
  return place.IsRectEmpty() != FALSE ? CRect() : place;
}

CellAddress GridCells::CellAt(POINT client) const {
  const CPoint point(client);
  // The grid's own tests, so that a reader's finger finds what a click would.
  const int column = grid_.HitTestHeader(point);
  if (column >= 0) return {-1, column};
  CRect rect;
  const int header = grid_.HitTestRowHeader(point, rect);
  if (header >= 0) return {header, -1};
  CBCGPGridItemID id;
  if (grid_.HitTest(point, id, rect) != FALSE) return {id.m_nRow, id.m_nColumn};
  const int row = grid_.HitTestRow(point);
  return row >= 0 && IsGroupLine(row) ? CellAddress{row, FirstColumn(grid_)} : CellAddress();
}

CellAddress GridCells::CurrentCell() const {
  const CBCGPGridItemID id = grid_.GetCurSelItemID();
  return id.IsNull() ? CellAddress() : MainCell({id.m_nRow, id.m_nColumn});
}

CellAddress GridCells::MainCell(CellAddress cell) const {
  const CBCGPGridRange block = grid_.GetMergedRange(IdOf(cell));
  return block.IsValid() ? CellAddress{block.m_nTop, block.m_nLeft} : cell;
}

SIZE GridCells::CellSpan(CellAddress cell) const {
  const CBCGPGridRange block = grid_.GetMergedRange(IdOf(cell));
  if (!block.IsValid()) return {1, 1};
  return {block.m_nRight - block.m_nLeft + 1, block.m_nBottom - block.m_nTop + 1};
}

CellAddress GridCells::CellOf(HWND window) const {
  const CWnd* editor = grid_.GetInPlaceWnd();
  const CBCGPGridItem* item = grid_.GetEditingItem();
  if (editor == nullptr || item == nullptr || editor->m_hWnd != window) return {};
  const CBCGPGridItemID id = item->GetGridItemID();
  return {id.m_nRow, id.m_nColumn};
}

std::vector<CellAddress> GridCells::SelectedCells(std::size_t most) const {
  std::vector<CellAddress> cells;
  const CBCGPGridColumnsInfo& info = grid_.GetColumnsInfo();
  for (const CBCGPGridRange& range : grid_.GetSelection())
    for (int row = range.m_nTop; row <= range.m_nBottom && cells.size() < most; ++row) {
      // Whole columns may be selected over a million rows; the caller's limit ends the walk.
      if (IsOutOfSight({row, -1})) continue;
      int column = info.GetNextVisibleColumn(range.m_nLeft - 1, TRUE);
      for (; column >= 0 && column <= range.m_nRight; column = info.GetNextVisibleColumn(column, TRUE))
        if (cells.size() < most && !IsCovered({row, column})) cells.push_back({row, column});
    }
  return cells;
}

void GridCells::Remember() {
  current_ = CurrentCell();
  const bool there = current_ != CellAddress();
  current_text_ = there ? CellText(current_) : CString();
  current_state_ = there ? CellState(current_) : 0;
}

void GridCells::ChosenChanged() {
  const CellAddress before = current_;
  Remember();
  // The focus first: readers read the cell, and then that it is selected.
  if (current_ != before) FocusCame();
  grid_.ReportAccessible(AccessEvent::Selection);
}

void GridCells::FocusCame() {
  if (current_ != CellAddress()) grid_.ReportAccessibleCell(AccessEvent::Focus, current_);
}

void GridCells::CellRedrawn(const CBCGPGridItem& item) {
  const CBCGPGridItemID id = item.GetGridItemID();
  const CellAddress cell{id.m_nRow, id.m_nColumn};
  if (cell != current_) {
    const bool check = dynamic_cast<const CBCGPGridCheckItem*>(&item) != nullptr;
    grid_.ReportAccessibleCell(check ? AccessEvent::State : AccessEvent::Value, cell);
    return;
  }
  // Of the cell that is read aloud nothing is reported that is as it was.
  const CString text = item.FormatItem();
  const unsigned state = CellState(cell);
  const bool other_text = std::exchange(current_text_, text) != text;
  const bool other_state = std::exchange(current_state_, state) != state;
  if (other_text) grid_.ReportAccessibleCell(AccessEvent::Value, cell);
  if (other_state) grid_.ReportAccessibleCell(AccessEvent::State, cell);
}

void GridCells::LaidOut() {
  // Layouts come with every row: a reader that is sent through the table for each would never speak.
  const SIZE now = CellCount();
  const bool other = std::exchange(moved_, false) || now.cx != count_.cx || now.cy != count_.cy;
  count_ = now;
  if (!other) return;
  grid_.ReportAccessible(AccessEvent::Structure);
  if (CurrentCell() != current_) ChosenChanged();
}

}  // namespace lorv
