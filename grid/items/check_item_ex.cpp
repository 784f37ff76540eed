#include "grid/items/check_item_ex.h"

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/painting/visual_manager.h"

// The suite's check boxes: where the box stands in its cell, and the third state.

IMPLEMENT_DYNCREATE(CBCGPGridCheckItemEx, CBCGPGridCheckItem)

CRect lorv::CheckBoxPlace(CRect cell, int width, bool labelled, int dots) {
  const int highest = ForDots(20, dots);
  if (cell.Height() > highest) {
    cell.top += (cell.Height() - highest) / 2;
    cell.bottom = cell.top + highest;
  }
  cell.DeflateRect(0, ForDots(2, dots));
  if (!labelled) cell.left += (cell.Width() - width) / 2;
  cell.right = cell.left + width;
  return cell;
}

CBCGPGridCheckItemEx::CBCGPGridCheckItemEx() : CBCGPGridCheckItemEx(false) {}

CBCGPGridCheckItemEx::CBCGPGridCheckItemEx(bool on, DWORD_PTR data) : CBCGPGridCheckItem(on, data) {}

void CBCGPGridCheckItemEx::EnableNotAllSelIcon(bool on) {
  not_all_ = on;
  Redraw();
}

int CBCGPGridCheckItemEx::DrawnState() const {
  // Strict, unlike its base: a value that is no truth raises the platform's error wherever it is drawn.
  _variant_t value = GetValue();
  value.ChangeType(VT_BOOL);
  if (value.boolVal == VARIANT_FALSE) return 0;
  return not_all_ ? 2 : 1;
}

void CBCGPGridCheckItemEx::OnDrawValue(CDC* dc, CRect rect) {
  constexpr UINT kLabelFlags = 34852;  // left, centred upright, one line, with an ellipsis, no prefixes
  constexpr int kLabelGap = 2;
  OnFillBackground(dc, rect);
  const CBCGPGridCtrl* owner = GetOwnerList();
  const int dots = owner == nullptr ? lorv::kUsualDpi : owner->Dots();
  const int width = lorv::ForDots(lorv::kItemButtonWidth, dots);
  const CRect box = lorv::CheckBoxPlace(rect, width, !GetLabel().IsEmpty(), dots);
  const COLORREF ground = owner == nullptr ? 0 : owner->BackColourOf(*this);
  CBCGPVisualManager::GetInstance()->OnDrawCheckBox(dc, box, DrawnState(), IsAllowEdit(), ground);
  if (GetLabel().IsEmpty() || owner == nullptr) return;
  rect.left = box.right + owner->Scaled(kLabelGap);
  dc->SetTextColor(owner->TextColourOf(*this));
  owner->DoDrawText(dc, GetLabel(), rect, kLabelFlags);
}
