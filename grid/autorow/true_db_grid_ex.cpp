#include "grid/autorow/true_db_grid_ex.h"

#include <algorithm>

#include "framework/values/com_error.h"
#include "framework/values/variant_text.h"

// The grid that keeps one empty row at its end for whoever goes on typing. For callers that row does not
// count; the class adds the next one as soon as it holds anything, and takes it away again when it is
// emptied.

IMPLEMENT_DYNCREATE(CBcgTrueDbGridCtrlEx, CBcgTrueDbGridCtrl)

BEGIN_MESSAGE_MAP(CBcgTrueDbGridCtrlEx, CBcgTrueDbGridCtrl)
ON_EN_CHANGE(lorv::kEditorId, OnChangeItemValue)
END_MESSAGE_MAP()

namespace {

// A value that has no text counts as empty.
CString TextOf(const _variant_t& value) {
  try {
    return VariantToText(value);
  } catch (const _com_error&) {
    return {};
  }
}

CString TextIn(const CWnd& editor) {
  CString text;
  editor.GetWindowText(text);
  return text;
}

}  // namespace

void CBcgTrueDbGridCtrlEx::SetAutoAddRow(bool on) {
  auto_add_row_ = on;
  KeepLastRow(on);
  if (!on) return;
  const int count = CBCGPGridCtrl::GetRowCount();
  if (count == 0 || !IsRowEmpty(count - 1)) AddRow(TRUE);
}

int CBcgTrueDbGridCtrlEx::GetRowCount(int all) const {
  const int count = CBcgTrueDbGridCtrl::GetRowCount(all);
  return auto_add_row_ ? std::max(0, count - 1) : count;
}

CBCGPGridRow* CBcgTrueDbGridCtrlEx::GetPrepareRow() const {
  return CBCGPGridCtrl::GetRow(CBCGPGridCtrl::GetRowCount() - 1);
}

CBCGPGridRow* CBcgTrueDbGridCtrlEx::GetRow(int position) const {
  if (!auto_add_row_) return CBcgTrueDbGridCtrl::GetRow(position);
  if (IsVirtualMode() != FALSE) return GetVirtualRow(position);
  const int count = CBCGPGridCtrl::GetRowCount();
  if (IsSorting() != FALSE || IsGrouping() != FALSE) return RowInOrder(position, count);
  return position >= count - 1 ? nullptr : CBCGPGridCtrl::GetRow(position);
}

CBCGPGridRow* CBcgTrueDbGridCtrlEx::RowInOrder(int position, int count) const {
  if (position < 0) return nullptr;
  if (position >= count - 1)
    return IsGrouping() == FALSE ? nullptr : GetGroupRow(position - std::max(0, count - 1));
  CBCGPGridRow* const row = GetTerminalRow(position);
  return row != nullptr && row->GetRowId() == position ? row : nullptr;
}

CBCGPGridRow* CBcgTrueDbGridCtrlEx::MainRow(int row) const {
  if (IsVirtualMode() != FALSE || row < 0 || row >= CBCGPGridCtrl::GetRowCount()) return nullptr;
  CBCGPGridRow* const found = CBCGPGridCtrl::GetRow(row);
  return found == nullptr || found->GetParentRow() != nullptr ? nullptr : found;
}

bool CBcgTrueDbGridCtrlEx::IsRowEmpty(int row) const {
  const CBCGPGridRow* const found = MainRow(row);
  if (found == nullptr) return false;
  for (int column = 0; column < GetColumnCount(); ++column) {
    const CBCGPGridItem* const item = found->GetItem(column);
    if (item == nullptr || GetColumnVisible(column) == FALSE) continue;
    if (!TextOf(item->GetValue()).IsEmpty()) return false;
    const CWnd* const editor = same_2014_ ? nullptr : item->GetInPlaceWnd();
    if (editor != nullptr && !TextIn(*editor).IsEmpty()) return false;
  }
  return true;
}

void CBcgTrueDbGridCtrlEx::AddRowComboList(int row) {
  const CBCGPGridRow* const lower = MainRow(row);
  const CBCGPGridRow* const upper = MainRow(row - 1);
  if (lower == nullptr || upper == nullptr) return;
  for (int column = 0; column < GetColumnCount(); ++column) {
    // A cell that was not made yet has no list.
    const CBCGPGridItem* const from = upper->FindItem(column);
    if (from == nullptr || (from->GetFlags() & lorv::kItemHasList) == 0) continue;
    CBCGPGridItem* const to = lower->GetItem(column);
    if (to == nullptr) continue;
    for (int option = 0; option < from->GetOptionCount(); ++option) to->AddOption(from->GetOption(option));
  }
}

int CBcgTrueDbGridCtrlEx::AddRow(int relayout) {
  const auto life = Watch();
  const int added = CBcgTrueDbGridCtrl::AddRow(relayout);
  if (!life.expired()) AddRowComboList(added);
  return added;
}

int CBcgTrueDbGridCtrlEx::AddRow(CBCGPGridRow* row, int relayout) {
  const auto life = Watch();
  const int added = CBcgTrueDbGridCtrl::AddRow(row, relayout);
  if (life.expired() || added < 0) return added;
  AddRowComboList(added);
  return std::max(0, GetRowCount() - 1);
}

int CBcgTrueDbGridCtrlEx::RemoveRow(int row, int relayout) {
  if (auto_add_row_ && row == GetRowCount() && !IsRowEmpty(row - 1)) return 0;
  return CBcgTrueDbGridCtrl::RemoveRow(row, relayout);
}

void CBcgTrueDbGridCtrlEx::RemoveAll() {
  const auto life = Watch();
  CBcgTrueDbGridCtrl::RemoveAll();
  if (!life.expired() && auto_add_row_) AddRow(TRUE);
}

void CBcgTrueDbGridCtrlEx::ReDim(int rows, int columns) {
  const auto life = Watch();
  CBcgTrueDbGridCtrl::ReDim(rows, columns);
  if (life.expired() || !auto_add_row_) return;
  // The row that was made when the table was emptied is the first one now, and older than the columns.
  CBCGPGridRow* const first = IsVirtualMode() != FALSE ? nullptr : CBCGPGridCtrl::GetRow(0);
  if (first != nullptr && first->GetItemCount() < GetColumnCount()) SetupRow(first, GetColumnCount());
  AddRow(TRUE);
  if (!life.expired()) OnChangeItemValue();
}

void CBcgTrueDbGridCtrlEx::OnChangeItemValue() {
  if (!auto_add_row_) return;
  const int last = GetRowCount();
  const bool empty = IsRowEmpty(last);
  if (empty != IsRowEmpty(last - 1)) return;
  // Nothing but the end of the table changes: at each key that makes a row, a long table is not measured
  // again.
  const auto trusted = TrustRowHeights();
  const lorv::StepScope step(Changes(), nullptr, lorv::StepKind::kPartOfEdit);
  if (!empty)
    AddRow(TRUE);
  else
    RemoveRow(GetCurrentRow() == last ? last - 1 : last, TRUE);
}

void CBcgTrueDbGridCtrlEx::OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) {
  const bool changed = editor != nullptr && TextIn(*editor) != item->FormatItem();
  const auto life = Watch();
  CBcgTrueDbGridCtrl::OnAfterInplaceEditCreated(item, editor);
  if (!life.expired() && changed) OnChangeItemValue();
}
