#include "gridcore/tips/inplace_tool_tip.h"

#include <algorithm>

// The base measures and draws a label with a description; a cell's tip has one text, and the place that the
// grid asks for.

IMPLEMENT_DYNAMIC(CBCGPInplaceToolTipCtrl, CBCGPToolTipCtrl)

BEGIN_MESSAGE_MAP(CBCGPInplaceToolTipCtrl, CBCGPToolTipCtrl)
ON_WM_PAINT()
END_MESSAGE_MAP()

UINT CBCGPInplaceToolTipCtrl::DrawFlags() const {
  const UINT lines = multiline_ ? DT_WORDBREAK : DT_SINGLELINE | DT_VCENTER;
  return DT_LEFT | DT_NOPREFIX | lines;
}

CSize CBCGPInplaceToolTipCtrl::NeededFor(int width) {
  CClientDC dc(this);
  dc.SelectObject(GetFont());
  CRect text(0, 0, std::max(1, width), 0);
  dc.DrawText(text_, static_cast<LPRECT>(text), DrawFlags() | DT_CALCRECT);
  return text.Size();
}

void CBCGPInplaceToolTipCtrl::Track(const CRect& rect, const CString& text) {
  if (m_hWnd == nullptr) return;
  text_ = text;
  SetWindowText(text);
  const int margins = 2 * text_margin_;
  const CSize needed = NeededFor(rect.Width() - margins);
  last_ = rect;
  // It covers the cell at least, so that the text stands where the cell's own stood.
  last_.right = std::max(rect.right, rect.left + needed.cx + margins);
  last_.bottom = std::max(rect.bottom, rect.top + needed.cy + 2);
  const CRect screen(lorv::DesktopInForce().WorkArea(rect.TopLeft()));
  CPoint at = last_.TopLeft();
  // A tip wider than the screen shows its beginning.
  at.x = std::max(screen.left, std::min(at.x, screen.right - last_.Width()));
  at.y = std::max(screen.top, std::min(at.y, screen.bottom - last_.Height()));
  SetWindowPos(nullptr, at.x, at.y, last_.Width(), last_.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
  ShowWindow(SW_SHOWNA);
  Invalidate();
}

void CBCGPInplaceToolTipCtrl::Deactivate() {
  last_.SetRectEmpty();
  text_.Empty();
  if (m_hWnd != nullptr && IsWindowVisible() != FALSE) Hide();
}

void CBCGPInplaceToolTipCtrl::OnPaint() {
  CPaintDC dc(this);
  TakeLooks();
  CRect client;
  GetClientRect(&client);
  COLORREF line = LineColour();
  COLORREF ink = TextColour();
  OnFillBackground(&dc, client, ink, line);
  OnDrawBorder(&dc, client, line);
  CFont* const former = dc.SelectObject(GetFont());
  dc.SetBkMode(TRANSPARENT);
  dc.SetTextColor(ink);
  client.DeflateRect(text_margin_, 1);
  dc.DrawText(text_, client, DrawFlags());
  dc.SelectObject(former);
}
