#include <algorithm>
#include <memory>
#include <unordered_set>

#include "grid/basic/basic_grid.h"
#include "grid/columns/column_texts.h"
#include "gridcore/geometry/line_span.h"

// Columns of the suite's grid: declared and kept as texts, and closed up in the rows when one goes.

void CBCGPBasicGridCtrl::InsertColumns(const CString& names, const CString& widths, int row_height) {
  int index = 0;
  const auto life = Watch();
  for (const lorv::DeclaredColumn& column : lorv::DeclaredColumns(names, widths)) {
    InsertColumn(GetColumnCount(), column.name, column.width, -1, TRUE);
    // A layout chooses the first cell, and runs handlers.
    if (life.expired()) return;
    if (column.hidden) SetColumnVisible(index, FALSE);
    ++index;
  }
  AdjustLayout();
  if (!life.expired() && row_height > 0) SetRowHeight(std::max(row_height, m_nRowHeight));
}

void CBCGPBasicGridCtrl::AddCellsForColumn(const CRuntimeClass* item_class) {
  const int rows = GetRowCount();
  for (int at = 0; at < rows; ++at) {
    CBCGPGridRow* row = GetRow(at);
    if (row == nullptr) continue;
    std::unique_ptr<CObject> made(item_class == nullptr ? nullptr : item_class->CreateObject());
    // A class that is no cell gives a plain one: rows and columns must stay of one length.
    auto* item = dynamic_cast<CBCGPGridItem*>(made.get());
    if (item != nullptr) static_cast<void>(made.release());
    row->AddItem(item != nullptr ? item : new CBCGPGridItem(_variant_t()));
  }
}

int CBCGPBasicGridCtrl::AddColumn(LPCTSTR name, double width, const CRuntimeClass* item_class) {
  // What no column can be as wide as, and what is no number, is cut here: the conversion would be undefined.
  const double most = lorv::kMaxColumnWidth;
  const int pixels = width > 0 ? static_cast<int>(std::min(width, most)) : 0;
  const int column = GetColumnCount();
  if (InsertColumn(column, name, pixels, -1, FALSE) == FALSE) return 0;
  if (item_class != nullptr) SetItemRTC(column, item_class);
  AddCellsForColumn(item_class);
  AdjustLayout();
  return 1;
}

// Values and behaviour move one cell to the left in fresh cells of the same class; the last one stays where
// it is, behind the columns, with its value.
void CBCGPBasicGridCtrl::CloseUpCells(CBCGPGridRow& row, int column) {
  for (int at = column; row.GetItem(at + 1) != nullptr && at >= 0; ++at) {
    const CBCGPGridItem* next = row.GetItem(at + 1);
    std::unique_ptr<CObject> made(next->GetRuntimeClass()->CreateObject());
    auto* item = dynamic_cast<CBCGPGridItem*>(made.get());
    if (item == nullptr) continue;
    static_cast<void>(made.release());
    item->SetValue(next->GetValue(), FALSE);
    item->SetData(next->GetData());
    item->Enable(next->IsEnabled(), FALSE);
    item->SetReadOnly(next->IsReadOnly(), FALSE);
    item->AllowEdit(next->IsAllowEdit());
    item->SetImage(next->GetImage(), FALSE);
    if (row.ReplaceItem(at, item, FALSE, FALSE) != FALSE) continue;
    // Handlers of an editor that closed for it took the row away.
    delete item;
    return;
  }
}

int CBCGPBasicGridCtrl::DeleteColumn(int column) {
  // Handlers of the layout may rebuild the table; rows that they make have no cell of that column.
  std::unordered_set<const CBCGPGridRow*> had_it;
  for (int at = 0; at < GetRowCount(); ++at) had_it.insert(GetRow(at));
  const auto life = Watch();
  const int deleted = CBCGPGridCtrl::DeleteColumn(column);
  if (deleted == FALSE || life.expired()) return deleted;
  // Handlers of the layout may have opened an editor again.
  EndEditItem(FALSE);
  for (int at = 0; !life.expired() && at < GetRowCount(); ++at) {
    CBCGPGridRow* row = GetRow(at);
    if (row != nullptr && had_it.count(row) != 0) CloseUpCells(*row, column);
  }
  if (!life.expired()) AdjustLayout();
  return deleted;
}

bool CBCGPBasicGridCtrl::SetColsWidth(const CString& widths) {
  if (widths.IsEmpty()) return false;
  int column = 0;
  for (const int width : lorv::WidthsFromText(widths)) {
    if (column >= GetColumnCount()) break;
    SetColumnWidth(column, width);
    ++column;
  }
  return true;
}

CString CBCGPBasicGridCtrl::GetColsWidth() {
  std::vector<int> widths;
  bool any_hidden = false;
  for (int column = 0; column < GetColumnCount(); ++column) {
    const bool hidden = GetColumnVisible(column) == FALSE;
    any_hidden = any_hidden || hidden;
    // A hidden column has no width of its own; it is shown for the moment of the question.
    if (hidden) SetColumnVisible(column, TRUE);
    widths.push_back(GetColumnWidth(column));
    if (hidden) SetColumnVisible(column, FALSE);
  }
  // Showing and hiding moved the items of a header of several lines.
  if (any_hidden) columns_info_.ReposHeaderItems(m_nHeaderHeight);
  return lorv::WidthsToText(widths);
}

void CBCGPBasicGridCtrl::SetHeaderLineCount(int lines) {
  if (multi_line_header_) columns_info_.SetHeaderLineCount(lines);
}

CBCGPGridHeaderItem* CBCGPBasicGridCtrl::AddHeaderItem(const CArray<int, int>* columns,
                                                       const CArray<int, int>* lines,
                                                       CBCGPGridHeaderItem* parent, LPCTSTR text, int align,
                                                       int flag) {
  return multi_line_header_ ? columns_info_.AddHeaderItem(columns, lines, parent, text, align, flag)
                            : nullptr;
}

void CBCGPBasicGridCtrl::OnColumnMoved(int from, int to) {
  click_mask_.Move(from, to);
  for (UINT& column : no_shortcut_)
    column = static_cast<UINT>(lorv::LineAfterMove(static_cast<int>(column), from, to));
  if (best_fit_column_ >= 0)
    best_fit_column_ = static_cast<short>(lorv::LineAfterMove(best_fit_column_, from, to));
  tip_cell_.SetNull();
  MoveLanguages(from, to);
}
