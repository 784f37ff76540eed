#include <memory>

#include "framework/objects/archive.h"
#include "framework/values/variant_text.h"
#include "grid/basic/basic_grid.h"
#include "grid/items/button_item.h"
#include "grid/items/presentation_item.h"
#include "grid/items/read_only_item.h"

// Cells of the suite's grid: values, lists, behaviour and colours.

// By the virtual GetRow, so that a row which a descendant hides is left alone.
template <class Change>
void CBCGPBasicGridCtrl::ForColumn(int column, Change change) {
  const int rows = GetRowCount();
  for (int row = 0; row < rows; ++row)
    if (CBCGPGridItem* item = GetItem(row, column)) change(*item, row);
}

template <class Change>
void CBCGPBasicGridCtrl::ForRow(int row, Change change) {
  if (row < 0 || row >= GetRowCount()) return;
  for (int column = 0; column < GetColumnCount(); ++column)
    if (CBCGPGridItem* item = GetItem(row, column)) change(*item);
}

CBCGPGridItem* CBCGPBasicGridCtrl::GetItem(int row, int column) const {
  const CBCGPGridRow* found = GetRow(row);
  return found == nullptr || column < 0 || column >= GetColumnCount() ? nullptr : found->GetItem(column);
}

int CBCGPBasicGridCtrl::ReplaceItem(int row, int column, CBCGPGridItem* item, BOOL keep_value) {
  if (row < 0 || column < 0 || row > GetRowCount() || column > GetColumnCount()) return 0;
  CBCGPGridRow* found = GetRow(row);
  if (found == nullptr || item == nullptr || found->GetItem(column) == nullptr) return 0;
  // Before the old cell goes, and with it its value.
  if (keep_value != FALSE) item->SetValue(found->GetItem(column)->GetValue(), TRUE);
  // An editor that closes for it runs handlers, which may have taken the row away.
  return found->ReplaceItem(column, item, TRUE, FALSE) != FALSE ? 1 : 0;
}

const CBCGPGridRow* CBCGPBasicGridCtrl::RowWithItem(int row, int column) const {
  const CBCGPGridRow* const found = GetRow(row);
  return found != nullptr && column < GetColumnCount() && found->HasItem(column) ? found : nullptr;
}

// Of the value alone, whatever the cell makes of it; raises _com_error where it has none.
CString CBCGPBasicGridCtrl::ValueText(int row, int column) const {
  const CBCGPGridRow* const found = RowWithItem(row, column);
  if (found == nullptr) return {};
  const CBCGPGridItem* const item = found->FindItem(column);
  return item == nullptr ? found->GetCellText(column) : VariantToText(item->GetValue());
}

// Where no cell was asked for yet none is made, so that filling a large table takes half the time.
bool CBCGPBasicGridCtrl::PutValue(int row, int column, const _variant_t& value, BOOL redraw) {
  CBCGPGridRow* const found = GetRow(row);
  if (found == nullptr || column >= GetColumnCount()) return false;
  return (redraw == FALSE || IsBeyondView(*found)) && found->PutValue(column, value);
}

void CBCGPBasicGridCtrl::SetValue(int row, int column, const _variant_t& value, BOOL redraw) {
  if (PutValue(row, column, value, redraw)) return;
  CBCGPGridItem* item = GetItem(row, column);
  if (item == nullptr) return;
  if (item->IsInPlaceEditing() != FALSE) {
    const auto life = Watch();
    EndEditItem(FALSE);
    if (life.expired()) return;
    // Ending an edit moves the focus, and whoever loses or gets it may have rebuilt the table.
    item = GetItem(row, column);
    if (item == nullptr) return;
  }
  const lorv::StepScope step(Changes());
  // The type of a cell is that of its last value: what is typed later is turned into it.
  item->SetValueAndType(value, redraw);
}

_variant_t CBCGPBasicGridCtrl::GetValue(int row, int column) const {
  if (row < 0 || row >= GetRowCount()) return {};
  const CBCGPGridRow* const found = RowWithItem(row, column);
  return found == nullptr ? _variant_t() : found->CopyValue(column);
}

_variant_t CBCGPBasicGridCtrl::GetValue(int column) const {
  const CBCGPGridRow* const found = RowWithItem(GetCurrentRow(), column);
  // Of no cell the value is a zero here, though empty where row and column are given.
  return found == nullptr ? _variant_t(0L) : found->CopyValue(column);
}

int CBCGPBasicGridCtrl::SetText(const CString& text) {
  if (GetCurSelItem() == nullptr) return 0;
  SetValue(GetCurrentRow(), GetCol(), _variant_t(text), TRUE);
  return 1;
}

CString CBCGPBasicGridCtrl::GetText() const {
  const CBCGPGridItem* item = GetCurSelItem();
  return item == nullptr ? CString() : VariantToText(item->GetValue());
}

int CBCGPBasicGridCtrl::ClearAll() {
  if (GetRowCount() == 0 || GetColumnCount() == 0) return 0;
  return ClearRange({0, 0, GetColumnCount() - 1, GetRowCount() - 1}, TRUE, FALSE, nullptr);
}

int CBCGPBasicGridCtrl::AddStringToList(CBCGPGridItem* item, const CString* strings, int count) {
  if (item == nullptr) return 0;
  item->RemoveAllOptions();
  // An option that is there already ends the list, and the answer says so.
  for (int i = 0; i < count && strings != nullptr; ++i)
    if (item->AddOption(strings[i]) == FALSE) return 0;
  return 1;
}

int CBCGPBasicGridCtrl::AddStringToList(CBCGPGridItem* item, const CStringArray& strings) {
  return AddStringToList(item, strings.GetData(), strings.GetSize());
}

void CBCGPBasicGridCtrl::SetColumnReadOnly(int column, bool on) {
  ForColumn(column, [&](CBCGPGridItem&, int row) { SetItemReadOnly(row, column, on); });
}

void CBCGPBasicGridCtrl::SetItemReadOnly(int row, int column, bool on) {
  CBCGPGridItem* item = GetItem(row, column);
  if (item == nullptr) return;
  item->AllowEdit(on ? FALSE : TRUE);
  // The grey of this call stays when the cell is editable again; only that of a read-only row becomes white.
  if (on)
    item->SetBackgroundColor(lorv::kReadOnlyCellColour);
  else if (item->GetBackgroundColor() == lorv::kReadOnlyColour)
    item->SetBackgroundColor(lorv::kWhite);
}

void CBCGPBasicGridCtrl::SetRowReadOnly(int row, bool on) {
  ForRow(row, [&](CBCGPGridItem& item) {
    item.SetReadOnly(on ? TRUE : FALSE);
    item.SetBackgroundColor(on ? lorv::kReadOnlyColour : lorv::kWhite);
  });
}

void CBCGPBasicGridCtrl::SetColReadOnly(int column, bool on) {
  ForColumn(column, [&](CBCGPGridItem& item, int) { item.SetReadOnly(on ? TRUE : FALSE); });
  SetItemRTC(column, on ? RUNTIME_CLASS(CBCGPGridReadOnlyItem) : nullptr);
}

void CBCGPBasicGridCtrl::SetColumnColor(int column, COLORREF colour) {
  ForColumn(column, [&](CBCGPGridItem& item, int) { item.SetBackgroundColor(colour, FALSE); });
}

void CBCGPBasicGridCtrl::SetRowBackgroundColor(int row, COLORREF colour, bool force) {
  ForRow(row, [&](CBCGPGridItem& item) {
    const COLORREF now = item.GetBackgroundColor();
    // A cell with a colour of its own keeps it, but for that of the selection.
    const bool own = now != lorv::kNoColour && now != selected_row_colour_;
    if (!own || force) item.SetBackgroundColor(colour, FALSE);
  });
}

void CBCGPBasicGridCtrl::SetRowTextColor(int row, COLORREF colour) {
  ForRow(row, [&](CBCGPGridItem& item) { item.SetTextColor(colour); });
}

void CBCGPBasicGridCtrl::SetBoldItem(int row, int column, bool bold) {
  auto* item = dynamic_cast<CBCGPGridPresentationItem*>(GetItem(row, column));
  if (item != nullptr) item->SetBold(bold ? TRUE : FALSE);
}

void CBCGPBasicGridCtrl::SetRowBoldText(int row, bool bold) {
  ForRow(row, [&](CBCGPGridItem& item) {
    if (auto* text = dynamic_cast<CBCGPGridPresentationItem*>(&item)) text->SetBold(bold ? TRUE : FALSE);
  });
}

namespace {

constexpr UINT kArchiveBytes = 280;

// The contents of one cell in another, by way of an archive in memory.
void TakeContents(const CBCGPGridItem& from, CBCGPGridItem& to) {
  CMemFile file;
  // Room for a usual cell at once; longer texts let it grow.
  file.SetLength(kArchiveBytes);
  CArchive out(&file, CArchive::store);
  from.WriteToArchive(out);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  to.ReadFromArchive(in);
}

}  // namespace

bool CBCGPBasicGridCtrl::SetButton(int row, int column, bool on) {
  CBCGPGridRow* found = GetRow(row);
  // Every cell is a cell: a button is never turned back into one.
  if (found == nullptr || column < 0 || column >= GetColumnCount() || !on) return false;
  const CBCGPGridItem* old = found->GetItem(column);
  if (old == nullptr || old->IsKindOf(RUNTIME_CLASS(CBCGPGridButtonItem)) != FALSE) return false;
  auto button = std::make_unique<CBCGPGridButtonItem>(_variant_t(_T("")), 2);
  const VARTYPE kind = old->GetValue().vt;
  // The archive of an empty cell would make the button empty, which begins with a text.
  if (kind != VT_EMPTY && kind != VT_NULL) TakeContents(*old, *button);
  if (found->ReplaceItem(column, button.get(), TRUE, FALSE) == FALSE) return false;
  static_cast<void>(button.release());
  return true;
}

void CBCGPBasicGridCtrl::SetColumnButton(int column, bool on) {
  SetItemRTC(column, on ? RUNTIME_CLASS(CBCGPGridButtonItem) : RUNTIME_CLASS(CBCGPGridItem));
}
