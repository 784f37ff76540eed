#include <algorithm>

#include "framework/drawing/device_context.h"
#include "gridcore/columns/columns_info.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/items/grid_item.h"

// How a plain cell is drawn: its background, its text, and what stands at its right end.

namespace {

// Pixels at 96 dots an inch.
constexpr int kTextMargin = 3;
constexpr int kArrowSize = 3;

// What stands to the right where the column does not say: numbers, but not dates and truths.
bool IsNumberType(VARTYPE type) {
  return lorv::IsPlainType(type) && type != VT_EMPTY && type != VT_NULL && type != VT_ERROR &&
         type != VT_BOOL && type != VT_DATE;
}

// A triangle of so many lines around the point, downwards or upwards.
void DrawArrow(CDC* dc, CPoint centre, int lines, bool down, COLORREF colour) {
  for (int line = 0; line < lines; ++line) {
    const int half = lines - 1 - line;
    const int y = static_cast<int>(centre.y) + (down ? line - lines / 2 : lines / 2 - line);
    dc->FillSolidRect(static_cast<int>(centre.x) - half, y, 2 * half + 1, 1, colour);
  }
}

}  // namespace

void CBCGPGridItem::OnFillBackground(CDC* dc, CRect rect) {
  const CBCGPGridCtrl* owner = GetOwnerList();
  if (owner != nullptr) dc->FillSolidRect(&rect, owner->BackColourOf(*this));
}

void CBCGPGridItem::OnDrawValue(CDC* dc, CRect rect) {
  const CRect button = GetButtonRect();
  if (button.IsRectEmpty() == FALSE) rect.right = std::max(rect.left, button.left);
  DrawText(dc, FormatItem(), rect);
}

void CBCGPGridItem::DrawText(CDC* dc, const CString& text, CRect rect) const {
  if (text.IsEmpty()) return;
  const CBCGPGridCtrl* owner = GetOwnerList();
  rect.DeflateRect(owner == nullptr ? kTextMargin : owner->Scaled(kTextMargin), 0);
  if (rect.IsRectEmpty() != FALSE) return;
  const int asked = owner == nullptr ? -1 : owner->GetColumnsInfo().GetColumnAlign(column_);
  UINT align = asked >= 0 ? static_cast<UINT>(asked) : (IsNumberType(value_.vt) ? DT_RIGHT : DT_LEFT);
  // An ampersand in a text is an ampersand.
  align |= DT_NOPREFIX;
  if (!Has(kMultiline)) {
    dc->DrawText(text, rect, align | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    return;
  }
  // The suite's texts mark their line breaks by a backslash and an n.
  CString lines = text;
  lines.Replace(_T("\\n"), _T("\n"));
  dc->DrawText(lines, rect, align | DT_WORDBREAK);
}

CRect CBCGPGridItem::GetButtonRect() const {
  if ((flags_ & (lorv::kItemHasList | lorv::kItemHasButton | lorv::kItemHasSpin)) == 0) return {};
  CRect rect = GetRect();
  if (rect.IsRectEmpty() != FALSE) return {};
  // The last pixels are the lines of the grid.
  rect.right -= 1;
  rect.bottom -= 1;
  rect.left = std::max(rect.left, rect.right - GetOwnerList()->GetButtonWidth());
  // The width is the cell's own affair; its virtual step may be asked on a cell that is not being changed.
  const_cast<CBCGPGridItem*>(this)->AdjustButtonRect(rect);
  return rect;
}

void CBCGPGridItem::AdjustButtonRect(CRect& /*rect*/) {}

void CBCGPGridItem::OnDrawButton(CDC* dc, CRect rect) {
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  dc->FillSolidRect(&rect, desktop.Colour(COLOR_BTNFACE));
  const COLORREF shadow = desktop.Colour(COLOR_BTNSHADOW);
  dc->Draw3dRect(&rect, shadow, shadow);
  const COLORREF mark = IsEnabled() != FALSE ? desktop.Colour(COLOR_BTNTEXT) : shadow;
  const CPoint centre = rect.CenterPoint();
  const CBCGPGridCtrl* const owner = GetOwnerList();
  const int lines = owner == nullptr ? kArrowSize : owner->Scaled(kArrowSize);
  if ((flags_ & lorv::kItemHasSpin) != 0) {
    DrawArrow(dc, {static_cast<int>(centre.x), static_cast<int>(rect.top + centre.y) / 2}, lines, false,
              mark);
    DrawArrow(dc, {static_cast<int>(centre.x), static_cast<int>(rect.bottom + centre.y) / 2}, lines, true,
              mark);
  } else if ((flags_ & lorv::kItemHasList) != 0) {
    DrawArrow(dc, centre, lines, true, mark);
  } else {
    dc->SetTextColor(mark);
    dc->DrawText(_T("..."), rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  }
}
