#include "grid/items/button_item.h"

#include "framework/drawing/device_context.h"
#include "framework/values/variant_text.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/painting/visual_manager.h"

// A cell with one button or several beside each other. Which of them was pressed is not reported: its owner
// finds it by the point, from the same places that were drawn.

IMPLEMENT_DYNCREATE(CBCGPGridButtonItem, CBCGPGridPresentationItem)

std::vector<CRect> lorv::ButtonPlaces(const CRect& row, int count) {
  std::vector<CRect> places;
  if (count <= 0) return places;
  const int width = row.Width() / count;
  const int rest = row.Width() % count;
  const int left = static_cast<int>(row.left) + (rest + 1) / 2;  // the odd pixel goes to the left
  for (int i = 0; i < count; ++i) {
    const int begin = left + i * width;
    places.emplace_back(begin, static_cast<int>(row.top), begin + width - 1, static_cast<int>(row.bottom));
  }
  return places;
}

CBCGPGridButtonItem::CBCGPGridButtonItem() : CBCGPGridButtonItem(_variant_t(), lorv::kItemHasButton) {}

CBCGPGridButtonItem::CBCGPGridButtonItem(const _variant_t& value, int style)
    : CBCGPGridPresentationItem(value) {
  SetFlag(static_cast<unsigned>(style));
}

void CBCGPGridButtonItem::SetButtonItem(bool on) {
  buttons_ = on;
  SetFlags();
  if (on)
    names_.Add(FormatItem());
  else
    SetFlag(lorv::kItemHasButton);
  Redraw();
}

void CBCGPGridButtonItem::AppendButton(LPCTSTR name) {
  buttons_ = true;
  SetFlags();
  names_.Add(CString(name));
  Redraw();
}

void CBCGPGridButtonItem::OnDrawValue(CDC* dc, CRect rect) {
  if (!buttons_) {
    CBCGPGridPresentationItem::OnDrawValue(dc, rect);
    return;
  }
  constexpr UINT kTextFlags = 2085;  // centred both ways, one line, no prefixes
  OnFillBackground(dc, rect);
  const CBCGPGridCtrl* const owner = GetOwnerList();
  const int gap = owner == nullptr ? 1 : owner->Scaled(1);
  rect.DeflateRect(gap, gap);
  const std::vector<CRect> places = lorv::ButtonPlaces(rect, names_.GetSize());
  for (int i = 0; i < static_cast<int>(places.size()); ++i)
    CBCGPVisualManager::GetInstance()->OnDrawPushButton(
        dc, places[static_cast<std::size_t>(i)], names_.GetAt(i), kTextFlags, button_on_ ? TRUE : FALSE);
}

BOOL CBCGPGridButtonItem::OnClickValue(UINT message, CPoint point) {
  if (!buttons_ || message != WM_LBUTTONDOWN) return CBCGPGridPresentationItem::OnClickValue(message, point);
  // The last step: the hook may end this cell.
  if (CBCGPGridCtrl* owner = GetOwnerList()) owner->OnClickButton(point);
  return TRUE;
}

void CBCGPGridButtonItem::OnClickButton(CPoint point) {
  if (button_on_) CBCGPGridPresentationItem::OnClickButton(point);
}

BOOL CBCGPGridButtonItem::OnSetCursor() const {
  return buttons_ ? FALSE : CBCGPGridPresentationItem::OnSetCursor();
}

CWnd* CBCGPGridButtonItem::CreateInPlaceEdit(CRect rect, BOOL& default_format) {
  return buttons_ ? nullptr : CBCGPGridPresentationItem::CreateInPlaceEdit(rect, default_format);
}
