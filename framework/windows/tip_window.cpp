#include "framework/windows/tip_window.h"

#include <algorithm>

#include "framework/ports/desktop_port.h"

// The tip's text is drawn from a copy that is taken on the thread of the windows: a painting may run on
// another one.

IMPLEMENT_DYNAMIC(CBCGPToolTipCtrl, CWnd)

BEGIN_MESSAGE_MAP(CBCGPToolTipCtrl, CWnd)
ON_WM_PAINT()
ON_MESSAGE(lorv::kActivateTip, OnActivateTip)
ON_NOTIFY_REFLECT(lorv::kTipShows, OnShow)
END_MESSAGE_MAP()

BOOL CBCGPToolTipCtrl::Create(CWnd* parent, DWORD style) {
  // A tip is never a child, and never seen before it has its place, whatever the caller's style says.
  return CWnd::Create(nullptr, _T(""), (style | WS_POPUP) & ~static_cast<DWORD>(WS_VISIBLE | WS_CHILD),
                      CRect(0, 0, 0, 0), parent, 0);
}

void CBCGPToolTipCtrl::TakeLooks() {
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  GetWindowText(label_);
  // Asked each time: the user may change fonts and colours while the program runs.
  font_ = CFont(desktop.DialogFont());
  system_text_ = desktop.Colour(COLOR_INFOTEXT);
  system_fill_ = desktop.Colour(COLOR_INFOBK);
  peer_ = lorv::PeerOf(m_hWnd);
}

LRESULT CBCGPToolTipCtrl::OnActivateTip(WPARAM w, LPARAM /*l*/) {
  active_ = w != 0;
  if (!active_) Hide();
  return 0;
}

void CBCGPToolTipCtrl::ShowAt(CPoint screen) {
  if (m_hWnd == nullptr || !active_) return;
  const HWND window = m_hWnd;
  const auto put = [&] {
    if (m_hWnd == window)
      SetWindowPos(nullptr, screen.x, screen.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  };
  const auto measure = [&] {
    NMHDR header = {};
    header.hwndFrom = window;
    header.code = lorv::kTipShows;
    LRESULT result = 0;
    // By way of the parent, as the system's own tips do it: a class may handle it there first.
    if (CWnd* const parent = GetParent(); parent != nullptr) {
      parent->SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
    } else {
      OnShow(&header, &result);
    }
  };
  // Already there when it takes its size: that depends on the dots and the room of the screen.
  put();
  if (m_hWnd != window) return;
  const int dots = GetDpi();
  measure();
  // With its new size it may stand on another screen than with the old one.
  if (m_hWnd == window && GetDpi() != dots) measure();
  // The parent may have done anything, with the tip's window too.
  put();
  if (m_hWnd != window) return;
  ShowWindow(SW_SHOWNA);
  Invalidate();
}

void CBCGPToolTipCtrl::OnShow(NMHDR* /*header*/, LRESULT* result) {
  TakeLooks();
  const CSize size = NeededSize();
  SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (result != nullptr) *result = 0;
}

CSize CBCGPToolTipCtrl::NeededSize() {
  CClientDC dc(this);
  dc.SelectObject(&font_);
  // Wider and higher than any screen: nothing is to be broken into lines or cut.
  constexpr int kWide = 1 << 14;
  const CSize label = OnDrawLabel(&dc, CRect(0, 0, kWide, kWide), TRUE);
  CSize text = label;
  if (HasDescription()) {
    const CSize description = OnDrawDescription(&dc, CRect(0, 0, kWide, kWide), TRUE);
    text.cx = std::max(text.cx, description.cx);
    // The half is the room of the line between label and description.
    text.cy += description.cy + kInnerDown + kInnerDown / 2;
  }
  const CSize icon = GetIconSize();
  if (HasIcon(icon)) {
    text.cx += icon.cx + kInnerAcross;
    text.cy = std::max(text.cy, icon.cy);
  }
  const CSize needed(text.cx + margin_.left + margin_.right + 2 * kInnerAcross,
                     text.cy + margin_.top + margin_.bottom + 2 * kInnerDown);
  // The rest would never be seen, and a window keeps all of its pixels.
  CRect place;
  GetWindowRect(place);
  const CRect screen(lorv::DesktopInForce().WorkArea(place.TopLeft()));
  return CSize(std::min(needed.cx, static_cast<LONG>(screen.Width())),
               std::min(needed.cy, static_cast<LONG>(screen.Height())));
}

CRect CBCGPToolTipCtrl::TextRect(const CRect& client) const {
  CRect text(client);
  text.DeflateRect(margin_.left, margin_.top, margin_.right, margin_.bottom);
  text.DeflateRect(kInnerAcross, kInnerDown);
  return text;
}

void CBCGPToolTipCtrl::DrawAround(CDC* dc, const CRect& client, CSize icon) {
  CRect text = TextRect(client);
  if (HasIcon(icon)) text.left += icon.cx + kInnerAcross;
  COLORREF line = LineColour();
  COLORREF ink = TextColour();
  CFont* const former_font = dc->SelectObject(&font_);
  // Before the pen is made: a derived class may answer with colours of its own.
  OnFillBackground(dc, client, ink, line);
  CPen pen(PS_SOLID, 1, line);
  CPen* const former = dc->SelectObject(&pen);
  OnDrawBorder(dc, client, line);
  dc->SetBkMode(TRANSPARENT);
  dc->SetTextColor(ink);
  const CSize label = OnDrawLabel(dc, text, FALSE);
  if (HasDescription()) {
    text.top += label.cy + kInnerDown + kInnerDown / 2;
    if (parameters_.draws_separator) OnDrawSeparator(dc, text.left, text.right, text.top - kInnerDown / 2);
    OnDrawDescription(dc, text, FALSE);
  }
  dc->SelectObject(former);
  dc->SelectObject(former_font);
}

void CBCGPToolTipCtrl::OnPaint() {
  CPaintDC dc(this);
  TakeLooks();
  CRect client;
  GetClientRect(client);
  // Without an icon: a class that has one paints by itself.
  DrawAround(&dc, client, CSize(0, 0));
}

void CBCGPToolTipCtrl::OnFillBackground(CDC* dc, CRect rect, COLORREF& /*text*/, COLORREF& /*line*/) {
  dc->FillSolidRect(rect, Known(parameters_.fill, system_fill_));
}

void CBCGPToolTipCtrl::OnDrawBorder(CDC* dc, CRect rect, COLORREF line) {
  dc->Draw3dRect(rect, line, line);
}

CSize CBCGPToolTipCtrl::OnDrawLabel(CDC* dc, CRect rect, BOOL only_size) {
  CRect measured(rect);
  // No ampersand marks a key here: names of files and components hold them.
  dc->DrawText(label_, static_cast<LPRECT>(measured), DT_LEFT | DT_NOPREFIX | DT_CALCRECT);
  if (only_size == 0) dc->DrawText(label_, rect, DT_LEFT | DT_NOPREFIX);
  return measured.Size();
}

CSize CBCGPToolTipCtrl::OnDrawDescription(CDC* dc, CRect rect, BOOL only_size) {
  CRect measured(rect);
  dc->DrawText(description_, static_cast<LPRECT>(measured), DT_LEFT | DT_NOPREFIX | DT_CALCRECT);
  if (only_size == 0) dc->DrawText(description_, rect, DT_LEFT | DT_NOPREFIX);
  return measured.Size();
}

void CBCGPToolTipCtrl::OnDrawSeparator(CDC* dc, int left, int right, int y) {
  dc->MoveTo(left, y);
  dc->LineTo(right, y);
}
