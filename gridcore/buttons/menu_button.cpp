#include "gridcore/buttons/menu_button.h"

#include "framework/drawing/device_context.h"
#include "framework/drawing/dots.h"
#include "framework/windows/menu.h"

// A button with a menu below it. The menu runs a loop of its own in the middle of the press, in which the
// button may be ended: after it everything is asked anew.

IMPLEMENT_DYNAMIC(CBCGPButton, CButton)
IMPLEMENT_DYNCREATE(CBCGPMenuButton, CBCGPButton)

BEGIN_MESSAGE_MAP(CBCGPMenuButton, CBCGPButton)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_KEYDOWN()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_ENABLE()
ON_MESSAGE(BM_CLICK, OnClick)
END_MESSAGE_MAP()

namespace {

// Pixels at 96 dots an inch.
constexpr int kArrowLines = 4;
constexpr int kArrowRoom = 15;  // at the right end
constexpr int kTextMargin = 4;
constexpr int kFocusInset = 2;

void DrawArrow(CDC& dc, const CRect& face, int dots, COLORREF colour) {
  const int lines = lorv::ForDots(kArrowLines, dots);
  const int x = static_cast<int>(face.right) - lorv::ForDots(kArrowRoom, dots) / 2 - 1;
  const int y = static_cast<int>(face.CenterPoint().y) - lines / 2;
  for (int line = 0; line < lines; ++line) {
    const int half = lines - 1 - line;
    dc.FillSolidRect(x - half, y + line, 2 * half + 1, 1, colour);
  }
}

}  // namespace

void CBCGPMenuButton::OnShowMenu() {
  m_nMenuResult = 0;
  CMenu* const menu = CMenu::FromHandle(m_hMenu);
  if (menu == nullptr || m_hWnd == nullptr) return;
  CRect place;
  GetWindowRect(&place);
  const auto life = Watch();
  const BOOL chosen = menu->TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(place.left),
                                           static_cast<int>(place.bottom), this);
  if (!life.expired()) m_nMenuResult = static_cast<UINT>(chosen);
}

void CBCGPMenuButton::Press() {
  // Pressed already: its menu is open, and a second one would stand over it.
  if (m_hWnd == nullptr || pressed_ || IsWindowEnabled() == FALSE) return;
  const auto life = Watch();
  pressed_ = true;
  if (m_bStayPressed) RedrawWindow();
  if (!life.expired()) OnShowMenu();
  if (life.expired()) return;
  pressed_ = false;
  if (m_hWnd == nullptr) return;
  Invalidate(FALSE);
  // A menu that was left by Escape is no click.
  const CWnd* const parent = m_nMenuResult == 0 ? nullptr : GetParent();
  if (parent == nullptr) return;
  parent->SendMessage(WM_COMMAND, MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID()), BN_CLICKED),
                      reinterpret_cast<LPARAM>(m_hWnd));
}

void CBCGPMenuButton::OnLButtonDown(UINT /*flags*/, CPoint /*point*/) {
  const auto life = Watch();
  SetFocus();
  if (!life.expired()) Press();
}

void CBCGPMenuButton::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  if (key == VK_SPACE || key == VK_RETURN || key == VK_DOWN || key == VK_F4)
    Press();
  else
    CBCGPButton::OnKeyDown(key, repeat, flags);
}

// A click by program, as of a test or a screen reader.
LRESULT CBCGPMenuButton::OnClick(WPARAM /*w*/, LPARAM /*l*/) {
  Press();
  return 0;
}

void CBCGPMenuButton::OnSetFocus(CWnd* former) {
  const auto life = Watch();
  CBCGPButton::OnSetFocus(former);
  if (!life.expired()) Invalidate(FALSE);
}

void CBCGPMenuButton::OnKillFocus(CWnd* next) {
  const auto life = Watch();
  CBCGPButton::OnKillFocus(next);
  if (!life.expired()) Invalidate(FALSE);
}

void CBCGPMenuButton::OnEnable(BOOL enable) {
  const auto life = Watch();
  CBCGPButton::OnEnable(enable);
  if (!life.expired()) Invalidate(FALSE);
}

void CBCGPMenuButton::OnPaint() {
  CPaintDC dc(this);
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  CRect face;
  GetClientRect(&face);
  const bool down = pressed_ && m_bStayPressed;
  const COLORREF shadow = desktop.Colour(COLOR_BTNSHADOW);
  dc.FillSolidRect(&face, desktop.Colour(COLOR_BTNFACE));
  dc.Draw3dRect(&face, shadow, shadow);
  CRect sunk = face;
  sunk.DeflateRect(1, 1);
  if (down) dc.Draw3dRect(&sunk, shadow, shadow);
  const COLORREF ink = desktop.Colour(IsWindowEnabled() != FALSE ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
  const int dots = GetDpi();
  DrawArrow(dc, face, dots, ink);
  CString text;
  GetWindowText(text);
  CRect room = face;
  room.DeflateRect(lorv::ForDots(kTextMargin, dots), 0);
  room.right -= lorv::ForDots(kArrowRoom, dots);
  CFont* const former = dc.SelectObject(GetFont());
  dc.SetBkMode(TRANSPARENT);
  dc.SetTextColor(ink);
  dc.DrawText(text, room, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
  dc.SelectObject(former);
  if (CWnd::GetFocus() != this) return;
  const int inset = lorv::ForDots(kFocusInset, dots);
  face.DeflateRect(inset, inset);
  dc.DrawFocusRect(&face);
}
