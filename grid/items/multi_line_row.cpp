#include "grid/items/multi_line_row.h"

#include <algorithm>
#include <memory>

#include "framework/drawing/device_context.h"
#include "framework/values/variant_text.h"
#include "framework/windows/controls.h"
#include "grid/items/button_item.h"
#include "grid/rows/cell_lines.h"
#include "gridcore/control/grid_control.h"

// A row that is as high as its texts need. Its height follows what is typed, so it is measured at each
// change; the grid is notified only where the number of lines is another one, and later, as a layout within
// typing would move the editor under the caret.

IMPLEMENT_DYNCREATE(CBCGPGridMultiLineRow, CBCGPGridRow)

CBCGPGridMultiLineRow::CBCGPGridMultiLineRow(int room, DWORD_PTR data, int flags)
    : CBCGPGridRow(room, data, flags) {}

void CBCGPGridMultiLineRow::SetMaxLines(int lines) {
  if (lines >= 1) most_ = lines;
}

void CBCGPGridMultiLineRow::SetMinLines(int lines) {
  if (lines >= 1) least_ = lines;
}

CBCGPGridItem* CBCGPGridMultiLineRow::CreateItem(int row, int column) {
  const CBCGPGridCtrl* owner = GetOwnerList();
  const CRuntimeClass* wanted = owner == nullptr ? nullptr : owner->GetItemRTC(column);
  const bool button = wanted != nullptr && (wanted == RUNTIME_CLASS(CBCGPGridButtonItem) ||
                                            wanted == RUNTIME_CLASS(CBCGPGridPresentationItem));
  std::unique_ptr<CBCGPGridItem> item;
  if (wanted != nullptr && !button) {
    std::unique_ptr<CObject> made(wanted->CreateObject());
    item.reset(dynamic_cast<CBCGPGridItem*>(made.get()));
    if (item == nullptr) return nullptr;
    static_cast<void>(made.release());
  } else {
    auto text = std::make_unique<CBCGPGridPresentationItem>(_variant_t());
    if (button) text->SetPresentationStyle(lorv::kButtonCell);
    item = std::move(text);
  }
  if (auto* text = dynamic_cast<CBCGPGridPresentationItem*>(item.get())) text->SetMultiLineItem(TRUE);
  return item->OnCreate(row, column) != FALSE ? item.release() : nullptr;
}

int CBCGPGridMultiLineRow::GetRowLines(CDC* dc, int width, const CString& text) const {
  return lorv::CellLines(
      text, width, [dc](const CString& piece) { return static_cast<int>(dc->GetTextExtent(piece).cx); });
}

int CBCGPGridMultiLineRow::LinesOf(CDC* dc, const CBCGPGridItem& item) const {
  const CBCGPGridCtrl* owner = GetOwnerList();
  const auto* edit = dynamic_cast<const CEdit*>(item.GetInPlaceWnd());
  if (owner->GetCurSelItem() == &item && edit != nullptr)
    return static_cast<int>(edit->SendMessage(EM_GETLINECOUNT));
  return GetRowLines(dc, item.GetRect().Width(), VariantToText(item.GetValue()));
}

void CBCGPGridMultiLineRow::OnItemUpdate(int notify) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner == nullptr) return;
  CClientDC dc(owner);
  dc.SelectObject(owner->GetFont());
  int needed = 1;
  for (int column = 0; column < GetItemCount(); ++column)
    if (owner->GetColumnVisible(column) != FALSE) needed = std::max(needed, LinesOf(&dc, *GetItem(column)));
  const int lines = lorv::RowLines(needed, most_, least_);
  SetLinesNumber(lines, FALSE);
  if (lines == reported_) return;
  reported_ = lines;
  if (notify != FALSE) owner->PostMessage(BCGM_GRID_ADJUST_LAYOUT);
}
