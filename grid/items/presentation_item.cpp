#include "grid/items/presentation_item.h"

#include "framework/drawing/device_context.h"
#include "grid/basic/basic_grid.h"
#include "grid/editing/arithmetic_text.h"
#include "grid/items/multi_line_edit.h"

// The cell that the suite's grids make by default: wider buttons, a menu of its texts, an edit of several
// lines, sums that are evaluated when the cell is left. What a click changes is reported as the user's.

IMPLEMENT_DYNCREATE(CBCGPGridPresentationItem, CBCGPGridItem)

namespace {

// Pixels at 96 dots an inch.
constexpr int kWiderButton = 3;
constexpr int kNarrowCharacters = 4;
constexpr COLORREF kButtonFace = RGB(215, 218, 227);

// The wait cursor for a scope.
class WaitCursor {
 public:
  WaitCursor() : before_(lorv::DesktopInForce().Cursor()) {
    lorv::DesktopInForce().SetCursor(lorv::kCursorWait);
  }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
  ~WaitCursor() { lorv::DesktopInForce().SetCursor(before_); }

 private:
  int before_;
};

}  // namespace

CBCGPGridPresentationItem::CBCGPGridPresentationItem() = default;

CBCGPGridPresentationItem::CBCGPGridPresentationItem(const _variant_t& value) : CBCGPGridItem(value) {}

void CBCGPGridPresentationItem::SetBold(int on) {
  bold_ = on;
  Redraw();
}

void CBCGPGridPresentationItem::SetMultiLineItem(int on) {
  multi_line_ = on;
  SetMultiline(on);
}

void CBCGPGridPresentationItem::SetPresentationStyle(int style) {
  const bool known = style == lorv::kPlainCell || style == lorv::kListCell || style == lorv::kButtonCell ||
                     style == lorv::kSpinCell;
  if (!known) return;
  SetFlags();
  SetFlag(static_cast<unsigned>(style));
  if (multi_line_ != 0) SetMultiline(TRUE);
}

void CBCGPGridPresentationItem::OnDrawValue(CDC* dc, CRect rect) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  CFont* const old = bold_ != 0 && owner != nullptr ? dc->SelectObject(owner->GetBoldFont()) : nullptr;
  CBCGPGridItem::OnDrawValue(dc, rect);
  if (old != nullptr) dc->SelectObject(old);
}

void CBCGPGridPresentationItem::OnDrawButton(CDC* dc, CRect rect) {
  const CBCGPGridCtrl* owner = GetOwnerList();
  LOGFONT face =
      owner == nullptr || owner->m_hWnd == nullptr ? LOGFONT{} : lorv::PeerOf(owner->m_hWnd)->Font();
  face.lfWidth = owner == nullptr ? kNarrowCharacters : owner->Scaled(kNarrowCharacters);
  CFont narrow(face);
  CFont* const old = dc->SelectObject(&narrow);
  CBCGPGridItem::OnDrawButton(dc, rect);
  dc->SelectObject(old);
  // The face of a flat button is drawn as a frame inside the library's own, one pixel wide.
  const COLORREF shadow = lorv::DesktopInForce().Colour(COLOR_BTNSHADOW);
  dc->Draw3dRect(&rect, kButtonFace, shadow);
}

BOOL CBCGPGridPresentationItem::OnUpdateValue() {
  return CBCGPGridItem::OnUpdateValue();
}

void CBCGPGridPresentationItem::SetItemChanged() {
  CBCGPGridItem::SetItemChanged();
}

void CBCGPGridPresentationItem::SetInPlaceEditFont() {
  CBCGPGridItem::SetInPlaceEditFont();
  CBCGPGridCtrl* const owner = GetOwnerList();
  CWnd* const editor = GetInPlaceWnd();
  if (bold_ != 0 && owner != nullptr && editor != nullptr) editor->SetFont(owner->GetBoldFont());
}

void CBCGPGridPresentationItem::DoClickButton(CPoint point) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  const CBCGPGridItemID id = GetGridItemID();
  const CString before = FormatItem();
  const WaitCursor wait;
  if (owner == nullptr) {
    OnClickButton(point);
    return;
  }
  const auto life = owner->Watch();
  const lorv::StepScope step(owner->Changes(), this);
  OnClickButton(point);
  if (life.expired()) return;
  CBCGPGridItem* item = owner->GetGridItem(id);
  if (item != nullptr && item->FormatItem() != before) item->SetItemChanged();
}

void CBCGPGridPresentationItem::OnClickButton(CPoint point) {
  CBCGPGridCtrl* const owner = GetOwnerList();
  if (owner == nullptr) return;
  const CBCGPGridItemID id = GetGridItemID();
  const auto life = owner->Watch();
  owner->OnClickButton(point);
  if (life.expired()) return;
  CBCGPGridItem* const item = owner->GetGridItem(id);
  if (item == nullptr) return;
  auto* grid = dynamic_cast<CBCGPBasicGridCtrl*>(owner);
  if (item->GetOptionCount() > 1 && grid != nullptr && grid->ShowItemStringList(point)) return;
  if (!life.expired()) item->CBCGPGridItem::OnClickButton(point);
}

void CBCGPGridPresentationItem::AdjustButtonRect(CRect& rect) {
  CBCGPGridItem::AdjustButtonRect(rect);
  const CBCGPGridCtrl* const owner = GetOwnerList();
  rect.left -= owner == nullptr ? kWiderButton : owner->Scaled(kWiderButton);
}

CEdit* CBCGPGridPresentationItem::NewInPlaceEdit() {
  return multi_line_ != 0 ? new CMutilineEdit : CBCGPGridItem::NewInPlaceEdit();
}

bool CBCGPGridPresentationItem::CalcArithmeticExp(CString& text) const {
  return lorv::ArithmeticText(EditorText(), text);
}
