#include "grid/items/color_item_ex.h"

#include <memory>

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/editors/mask_edit.h"

// A colour shown as a square and typed as six digits. The digits are red, green and blue in the order of
// reading, though the number itself has blue first.

IMPLEMENT_DYNCREATE(CBCGPGridColorItemEx, CBCGPGridColorItem)

CBCGPGridColorItemEx::CBCGPGridColorItemEx() : CBCGPGridColorItemEx(lorv::kNoColour, nullptr) {}

CBCGPGridColorItemEx::CBCGPGridColorItemEx(COLORREF colour, CPalette* palette, DWORD_PTR data)
    : CBCGPGridColorItem(colour, palette, data) {}

void CBCGPGridColorItemEx::OnDrawValue(CDC* dc, CRect rect) {
  rect.right = rect.left + rect.Height();
  const CBCGPGridCtrl* const owner = GetOwnerList();
  const int gap = owner == nullptr ? 1 : owner->Scaled(1);
  rect.DeflateRect(gap, gap);
  rect.top += gap;
  rect.left += gap;
  if (rect.IsRectEmpty() != FALSE) return;
  const COLORREF colour = GetColor();
  dc->FillSolidRect(&rect, colour == lorv::kNoColour ? GetAutomaticColor() : colour);
  dc->Draw3dRect(&rect, 0, 0);
}

BOOL CBCGPGridColorItemEx::OnEdit(CPoint /*point*/) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner == nullptr) return FALSE;
  constexpr DWORD kStyle = 0x50000000;  // a visible child
  constexpr DWORD kLocked = 0x800;      // ES_READONLY
  CRect place = GetRect();
  CRect spin;
  AdjustInPlaceEditRect(place, spin);
  auto edit = std::make_unique<CBCGPMaskEdit>();
  edit->EnableMask(_T("AAAAAA"), _T("______"), _T(' '));
  edit->SetValidChars(_T("01234567890ABCDEFabcdef"));
  const DWORD style = IsAllowEdit() != FALSE ? kStyle : kStyle | kLocked;
  if (edit->Create(nullptr, FormatItem(), style, place, owner, lorv::kEditorId) == FALSE) return FALSE;
  owner->ShowEditor(this, std::move(edit));
  return TRUE;
}

BOOL CBCGPGridColorItemEx::OnUpdateValue() {
  const COLORREF before = GetColor();
  // Until the value is taken, the cell's text is that of its editor.
  const CString text = GetInPlaceWnd() == nullptr ? FormatItem() : EditorText();
  const COLORREF typed = text.IsEmpty() ? before : lorv::ColourOfText(text, before);
  if (CanUpdateData() != FALSE) {
    const auto by_user = GetOwnerList()->Changes().ByUser();
    SetColor(typed);
  }
  // The last step: handlers of a change may end this cell.
  if (GetColor() != before) SetItemChanged();
  return TRUE;
}
