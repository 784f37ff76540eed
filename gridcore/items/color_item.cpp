#include "gridcore/items/color_item.h"

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"

// A colour as a cell. Digits are read one colour part at a time, so half a number changes the parts that
// were typed and leaves the others.

namespace {

constexpr int kMargin = 2;  // pixels at 96 dots an inch, around the colour

int HexDigit(TCHAR c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

COLORREF lorv::ColourOfText(const CString& text, COLORREF before) {
  BYTE parts[] = {GetRValue(before), GetGValue(before), GetBValue(before)};
  int at = 0;
  for (BYTE& part : parts) {
    // Blanks in front of a number are passed over, and one digit is a number as well.
    while (text.GetAt(at) == ' ') ++at;
    const int first = HexDigit(text.GetAt(at));
    if (first < 0) break;
    const int second = HexDigit(text.GetAt(at + 1));
    part = static_cast<BYTE>(second < 0 ? first : first * 16 + second);
    at += second < 0 ? 1 : 2;
  }
  return RGB(parts[0], parts[1], parts[2]);
}

IMPLEMENT_DYNCREATE(CBCGPGridColorItem, CBCGPGridItem)

CBCGPGridColorItem::CBCGPGridColorItem() : CBCGPGridColorItem(lorv::kNoColour, nullptr) {}

CBCGPGridColorItem::CBCGPGridColorItem(COLORREF colour, CPalette* /*palette*/, DWORD_PTR data)
    : CBCGPGridItem(_variant_t(static_cast<int>(colour)), data) {}

COLORREF CBCGPGridColorItem::GetColor() const {
  // Hosts put colours in as any type of number, and texts that are none stand for no colour.
  VARIANT number = {};
  return lorv::ChangeValueType(number, GetValue(), VT_I4) == S_OK ? static_cast<COLORREF>(number.lVal)
                                                                  : lorv::kNoColour;
}

void CBCGPGridColorItem::SetColor(COLORREF colour) {
  SetValue(_variant_t(static_cast<int>(colour)), TRUE);
}

CString CBCGPGridColorItem::FormatItem() const {
  const COLORREF colour = GetColor();
  CString text;
  if (colour != lorv::kNoColour)
    text.Format(_T("%02X%02X%02X"), int{GetRValue(colour)}, int{GetGValue(colour)}, int{GetBValue(colour)});
  return text;
}

_variant_t CBCGPGridColorItem::ValueOfText(const CString& text) const {
  return _variant_t(static_cast<int>(lorv::ColourOfText(text, GetColor())));
}

void CBCGPGridColorItem::OnDrawValue(CDC* dc, CRect rect) {
  const COLORREF colour = GetColor();
  const CBCGPGridCtrl* const owner = GetOwnerList();
  const int margin = owner == nullptr ? kMargin : owner->Scaled(kMargin);
  rect.DeflateRect(margin, margin);
  if (rect.IsRectEmpty() == FALSE) dc->FillSolidRect(&rect, colour == lorv::kNoColour ? automatic_ : colour);
}
