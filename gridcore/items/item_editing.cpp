#include <memory>

#include "framework/windows/controls.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/items/grid_item.h"
#include "gridcore/rows/grid_row.h"

// How a plain cell is edited: a native edit over its text.

CWnd* CBCGPGridItem::GetInPlaceWnd() const {
  const CBCGPGridCtrl* owner = GetOwnerList();
  return owner != nullptr && owner->GetEditingItem() == this ? owner->GetInPlaceWnd() : nullptr;
}

BOOL CBCGPGridItem::OnEdit(CPoint /*point*/) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner == nullptr) return FALSE;
  CRect edit = GetRect();
  CRect spin;
  AdjustInPlaceEditRect(edit, spin);
  BOOL default_format = TRUE;
  std::unique_ptr<CWnd> editor(CreateInPlaceEdit(edit, default_format));
  return editor == nullptr ? FALSE : owner->ShowEditor(this, std::move(editor));
}

// Items with an edit of their own kind replace this alone.
CEdit* CBCGPGridItem::NewInPlaceEdit() {
  return new CEdit;
}

CWnd* CBCGPGridItem::CreateInPlaceEdit(CRect rect, BOOL& default_format) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner == nullptr) return nullptr;
  DWORD style = WS_CHILD | WS_VISIBLE;
  style |= static_cast<DWORD>(Has(kMultiline) ? ES_MULTILINE | ES_AUTOVSCROLL : ES_AUTOHSCROLL);
  std::unique_ptr<CEdit> edit(NewInPlaceEdit());
  if (edit == nullptr) return nullptr;
  // The text comes with the window, so that no notification reports a change that nobody made.
  const CString text = default_format != FALSE ? owner->FirstEditorText(*this) : CString();
  if (edit->Create(nullptr, text, style, rect, owner, lorv::kEditorId) == FALSE) return nullptr;
  return edit.release();
}

void CBCGPGridItem::SetInPlaceEditFont() {
  const CBCGPGridCtrl* owner = GetOwnerList();
  if (CWnd* editor = GetInPlaceWnd()) editor->SetFont(owner->GetFont());
}

void CBCGPGridItem::AdjustInPlaceEditRect(CRect& edit, CRect& spin) const {
  edit.right -= 1;
  edit.bottom -= 1;
  spin = CRect();
  const CRect button = GetButtonRect();
  if (button.IsRectEmpty() != FALSE) return;
  edit.right = std::max(edit.left, button.left);
  if ((flags_ & lorv::kItemHasSpin) != 0) spin = button;
}

CString CBCGPGridItem::EditorText() const {
  CString text;
  if (const CWnd* editor = GetInPlaceWnd()) editor->GetWindowText(text);
  return text;
}

BOOL CBCGPGridItem::CanUpdateData() const {
  const CBCGPGridCtrl* owner = GetOwnerList();
  return owner != nullptr && owner->IsEditableNow(this) != FALSE;
}

_variant_t CBCGPGridItem::ValueOfText(const CString& text) const {
  // A number that was typed into a cell of numbers is one again; what cannot be one stays the text that it
  // is.
  const bool textual = value_.vt == VT_BSTR || !lorv::IsPlainType(value_.vt) || value_.vt == VT_EMPTY ||
                       value_.vt == VT_NULL || value_.vt == VT_ERROR;
  _variant_t typed(text);
  if (textual) return typed;
  _variant_t changed;
  return lorv::ChangeValueType(changed, typed, value_.vt) == S_OK ? changed : typed;
}

BOOL CBCGPGridItem::OnUpdateValue() {
  if (GetInPlaceWnd() == nullptr || GetOwnerList()->EditorUntouched()) return TRUE;
  const CString text = EditorText();
  // An edit that changed nothing is none: no event, and a number keeps the digits that its text does not
  // show.
  if (text == FormatItem()) return TRUE;
  _variant_t typed = ValueOfText(text);
  {
    const auto by_user = GetOwnerList()->Changes().ByUser();
    PutValue(std::move(typed));
  }
  // Nothing follows: the handlers of a change may have ended this cell.
  SetItemChanged();
  return TRUE;
}

BOOL CBCGPGridItem::OnClickValue(UINT /*message*/, CPoint /*point*/) {
  return FALSE;
}

void CBCGPGridItem::OnClickButton(CPoint /*point*/) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner != nullptr && (flags_ & lorv::kItemHasList) != 0) owner->DropList(TRUE);
}
