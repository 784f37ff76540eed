#include "gridcore/items/check_item.h"

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/painting/visual_manager.h"

// A cell that is on or off. It has no editor: the blank and a click turn it over at once, as one step of the
// user's.
IMPLEMENT_DYNCREATE(CBCGPGridCheckItem, CBCGPGridItem)

CBCGPGridCheckItem::CBCGPGridCheckItem() : CBCGPGridCheckItem(false) {}

CBCGPGridCheckItem::CBCGPGridCheckItem(bool on, DWORD_PTR data) : CBCGPGridItem(_variant_t(on), data) {}

bool CBCGPGridCheckItem::IsOn() const {
  _variant_t on;
  _variant_t value = GetValue();
  // A fill or a host may have put any text here, and painting asks: what is no truth is off.
  return SUCCEEDED(VariantChangeType(&on, &value, 0, VT_BOOL)) && on.boolVal != VARIANT_FALSE;
}

BOOL CBCGPGridCheckItem::OnSpace() {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner == nullptr || owner->IsEditableNow(this) == FALSE) return FALSE;
  const lorv::StepScope step(owner->Changes(), this);
  {
    const auto by_user = owner->Changes().ByUser();
    SetValue(_variant_t(!IsOn()), TRUE);
  }
  // The last step: handlers may end this cell.
  SetItemChanged();
  return TRUE;
}

BOOL CBCGPGridCheckItem::OnClickValue(UINT message, CPoint /*point*/) {
  if (message != WM_LBUTTONDOWN && message != WM_LBUTTONDBLCLK) return FALSE;
  OnSpace();
  return TRUE;
}

// F2 and a typed letter open nothing here.
BOOL CBCGPGridCheckItem::OnEdit(CPoint /*point*/) {
  return FALSE;
}

void CBCGPGridCheckItem::OnDrawValue(CDC* dc, CRect rect) {
  const CBCGPGridCtrl* const owner = GetOwnerList();
  const COLORREF ground = owner == nullptr ? 0 : owner->BackColourOf(*this);
  CBCGPVisualManager::GetInstance()->OnDrawCheckBox(dc, rect, IsOn() ? 1 : 0, IsAllowEdit(), ground);
}
