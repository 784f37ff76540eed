#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/drawing/drawing_tools.h"
#include "framework/windows/accessible_table.h"
#include "framework/windows/window.h"

// Text, place, looks and bars of a window: each is a question to its peer, and a window without a peer
// answers as an empty one. Nothing is kept here but the font object that GetFont gives.

using lorv::PeerOf;

void CWnd::GetWindowText(CString& text) const {
  text = PeerOf(m_hWnd)->Text();
}

int CWnd::GetWindowText(LPTSTR text, int room) const {
  if (text == nullptr || room <= 0) return 0;
  const CString whole = PeerOf(m_hWnd)->Text();
  // Cut to the room, with its end: callers have buffers of fixed size.
  const int count = std::min(whole.GetLength(), room - 1);
  std::copy_n(whole.GetString(), count, text);
  text[count] = 0;
  return count;
}

int CWnd::GetWindowTextLength() const {
  return PeerOf(m_hWnd)->Text().GetLength();
}

void CWnd::SetWindowText(LPCTSTR text) {
  PeerOf(m_hWnd)->SetText(text);
}

void CWnd::SetDlgItemText(int id, LPCTSTR text) {
  if (CWnd* const item = GetDlgItem(id)) item->SetWindowText(text);
}

int CWnd::GetDlgItemText(int id, CString& text) const {
  text.Empty();
  if (const CWnd* const item = GetDlgItem(id)) item->GetWindowText(text);
  return text.GetLength();
}

CString CWnd::GetWindowClassName() const {
  return PeerOf(m_hWnd)->ClassName();
}

CFont* CWnd::GetFont() const {
  if (m_hWnd == nullptr) return nullptr;
  // Made at the first question and kept: callers hold the pointer, as of the framework's own.
  if (font_ == nullptr) font_ = std::make_shared<CFont>(PeerOf(m_hWnd)->Font());
  return font_.get();
}

void CWnd::SetFont(CFont* font, BOOL redraw) {
  const auto peer = PeerOf(m_hWnd);
  // The next GetFont asks for the font that is in force then.
  font_.reset();
  if (font != nullptr) peer->SetFont(font->Face());
  if (redraw != 0) peer->Invalidate(nullptr);
}

DWORD CWnd::GetStyle() const {
  return PeerOf(m_hWnd)->Style();
}

DWORD CWnd::GetExStyle() const {
  return PeerOf(m_hWnd)->ExStyle();
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT /*flags*/) {
  const auto peer = PeerOf(m_hWnd);
  const DWORD former = peer->Style();
  const DWORD fresh = lorv::Without(former, remove) | add;
  // FALSE means that nothing was to change, as in the framework.
  if (fresh == former) return FALSE;
  peer->SetStyle(fresh);
  return TRUE;
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT /*flags*/) {
  const auto peer = PeerOf(m_hWnd);
  const DWORD former = peer->ExStyle();
  const DWORD fresh = lorv::Without(former, remove) | add;
  if (fresh == former) return FALSE;
  peer->SetExStyle(fresh);
  return TRUE;
}

void CWnd::GetWindowRect(LPRECT rect) const {
  *rect = PeerOf(m_hWnd)->WindowRect();
}

void CWnd::GetClientRect(LPRECT rect) const {
  *rect = PeerOf(m_hWnd)->ClientRect();
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
  MoveWindow(CRect(x, y, x + width, y + height), repaint);
}

void CWnd::MoveWindow(LPCRECT rect, BOOL repaint) {
  const auto peer = PeerOf(m_hWnd);
  peer->Place(*rect);
  if (repaint != 0) peer->Invalidate(nullptr);
}

BOOL CWnd::SetWindowPos(const CWnd* /*after*/, int x, int y, int width, int height, UINT flags) {
  if (m_hWnd == nullptr) return FALSE;
  const auto peer = PeerOf(m_hWnd);
  CRect place(peer->WindowRect());
  const HWND parent = peer->Parent();
  // A child's place counts from its parent's client area, the rectangle asked for from the screen.
  if (parent != nullptr) place -= PeerOf(parent)->ClientOrigin();
  if ((flags & SWP_NOMOVE) == 0) place.MoveToXY(x, y);
  if ((flags & SWP_NOSIZE) == 0) place.SetRect(place.left, place.top, place.left + width, place.top + height);
  if ((flags & (SWP_NOMOVE | SWP_NOSIZE)) != (SWP_NOMOVE | SWP_NOSIZE)) peer->Place(place);
  // The only order that the desktops have in common is "in front".
  if ((flags & SWP_NOZORDER) == 0) peer->Raise();
  // Last: the window is shown or hidden at its new place, without a flash at the old one.
  if ((flags & SWP_HIDEWINDOW) != 0) peer->Show(SW_HIDE);
  if ((flags & SWP_SHOWWINDOW) != 0) peer->Show((flags & SWP_NOACTIVATE) != 0 ? SW_SHOWNA : SW_SHOW);
  return TRUE;
}

void CWnd::ClientToScreen(LPPOINT point) const {
  const POINT origin = PeerOf(m_hWnd)->ClientOrigin();
  *point = CPoint(*point) + origin;
}

void CWnd::ClientToScreen(LPRECT rect) const {
  *rect = CRect(*rect) + PeerOf(m_hWnd)->ClientOrigin();
}

void CWnd::ScreenToClient(LPPOINT point) const {
  const CSize back(CPoint(PeerOf(m_hWnd)->ClientOrigin()));
  *point = CPoint(*point) - static_cast<SIZE>(back);
}

void CWnd::ScreenToClient(LPRECT rect) const {
  *rect = CRect(*rect) - PeerOf(m_hWnd)->ClientOrigin();
}

BOOL CWnd::ShowWindow(int how) {
  // Asked before: the answer is how it was.
  const BOOL before = IsWindowVisible();
  PeerOf(m_hWnd)->Show(how);
  return before;
}

BOOL CWnd::IsWindowVisible() const {
  HWND at = m_hWnd;
  // A window within a hidden one is not seen, whatever its own style says.
  for (; at != nullptr; at = PeerOf(at)->Parent())
    if ((PeerOf(at)->Style() & WS_VISIBLE) == 0) return FALSE;
  return m_hWnd != nullptr;
}

BOOL CWnd::EnableWindow(BOOL enable) {
  // The framework answers whether it was disabled.
  const BOOL before = m_hWnd != nullptr && !IsWindowEnabled();
  PeerOf(m_hWnd)->Enable(enable != 0);
  return before;
}

BOOL CWnd::IsWindowEnabled() const {
  return m_hWnd != nullptr && (GetStyle() & WS_DISABLED) == 0;
}

void CWnd::Invalidate(BOOL /*erase*/) {
  PeerOf(m_hWnd)->Invalidate(nullptr);
}

void CWnd::InvalidateRect(LPCRECT rect, BOOL /*erase*/) {
  PeerOf(m_hWnd)->Invalidate(rect);
}

void CWnd::ValidateRect(LPCRECT rect) {
  PeerOf(m_hWnd)->Validate(rect);
}

BOOL CWnd::GetUpdateRect(LPRECT rect, BOOL /*erase*/) const {
  const CRect bounds = GetUpdateRegion().Bounds();
  if (rect != nullptr) *rect = bounds;
  // Without a rectangle it only asks whether anything is out of date.
  return static_cast<BOOL>(bounds.IsRectEmpty() == 0);
}

lorv::Region CWnd::GetUpdateRegion() const {
  lorv::Region region;
  for (const RECT& rect : PeerOf(m_hWnd)->UpdateRects()) region.Add(rect);
  return region;
}

void CWnd::ScrollWindow(int across, int down, LPCRECT area, LPCRECT clip) {
  // Children move along only where the whole window scrolls.
  PeerOf(m_hWnd)->Shift({across, down}, area, clip, area == nullptr);
}

int CWnd::ScrollWindowEx(int across, int down, LPCRECT area, LPCRECT clip, void* /*always_null*/,
                         LPRECT update, UINT flags) {
  if (m_hWnd == nullptr) return RGN_ERROR;
  PeerOf(m_hWnd)->Shift({across, down}, area, clip, (flags & SW_SCROLLCHILDREN) != 0);
  const lorv::Region now = GetUpdateRegion();
  if (update != nullptr) *update = now.Bounds();
  if (now.IsEmpty()) return NULLREGION;
  return now.Rects().size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

int CWnd::GetDpi() const {
  return PeerOf(m_hWnd)->Dpi();
}

void CWnd::UpdateWindow() {
  PeerOf(m_hWnd)->Update();
}

BOOL CWnd::RedrawWindow(LPCRECT rect, void* /*region*/, UINT flags) {
  const auto peer = PeerOf(m_hWnd);
  if ((flags & RDW_INVALIDATE) != 0) peer->Invalidate(rect);
  // Behind the invalidation, whose part it paints at once.
  if ((flags & RDW_UPDATENOW) != 0) peer->Update();
  return m_hWnd != nullptr;
}

void CWnd::SetRedraw(BOOL on) {
  SendMessage(WM_SETREDRAW, static_cast<WPARAM>(on != 0));
}

// Made for the caller and ended by ReleaseDC, as the interface has it.
CDC* CWnd::GetDC() {
  return m_hWnd == nullptr ? nullptr : new CClientDC(this);
}

int CWnd::ReleaseDC(CDC* dc) {
  delete dc;
  return dc != nullptr;
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT milliseconds, void* /*always_null*/) {
  if (m_hWnd == nullptr) return 0;
  PeerOf(m_hWnd)->SetTimer(id, milliseconds);
  return id;
}

BOOL CWnd::KillTimer(UINT_PTR id) {
  return PeerOf(m_hWnd)->KillTimer(id);
}

BOOL CWnd::SetScrollInfo(int bar, SCROLLINFO* info, BOOL /*redraw*/) {
  if (m_hWnd == nullptr || info == nullptr) return FALSE;
  PeerOf(m_hWnd)->SetScroll(bar, *info);
  return TRUE;
}

BOOL CWnd::GetScrollInfo(int bar, SCROLLINFO* info, UINT mask) {
  if (m_hWnd == nullptr || info == nullptr) return FALSE;
  const SCROLLINFO now = PeerOf(m_hWnd)->Scroll(bar);
  // What was not asked for stays as the caller had it.
  if ((mask & SIF_RANGE) != 0) info->nMin = now.nMin;
  if ((mask & SIF_RANGE) != 0) info->nMax = now.nMax;
  if ((mask & SIF_PAGE) != 0) info->nPage = now.nPage;
  if ((mask & SIF_POS) != 0) info->nPos = now.nPos;
  if ((mask & SIF_TRACKPOS) != 0) info->nTrackPos = now.nTrackPos;
  return TRUE;
}

int CWnd::SetScrollPos(int bar, int position, BOOL /*redraw*/) {
  // Asked before: the answer is the place that the bar had.
  const int former = GetScrollPos(bar);
  SCROLLINFO info = {};
  info.fMask = SIF_POS;
  info.nPos = position;
  PeerOf(m_hWnd)->SetScroll(bar, info);
  return former;
}

int CWnd::GetScrollPos(int bar) const {
  return PeerOf(m_hWnd)->Scroll(bar).nPos;
}

void CWnd::SetScrollRange(int bar, int least, int most, BOOL /*redraw*/) {
  SCROLLINFO info = {};
  info.fMask = SIF_RANGE;
  info.nMin = least;
  info.nMax = most;
  PeerOf(m_hWnd)->SetScroll(bar, info);
}

void CWnd::GetScrollRange(int bar, int* least, int* most) const {
  const SCROLLINFO now = PeerOf(m_hWnd)->Scroll(bar);
  *least = now.nMin;
  *most = now.nMax;
}

void CWnd::ShowScrollBar(UINT bar, BOOL show) {
  const auto peer = PeerOf(m_hWnd);
  // SB_BOTH is neither of the two and shows both.
  if (bar != static_cast<UINT>(SB_VERT)) peer->ShowScroll(SB_HORZ, show != 0);
  if (bar != static_cast<UINT>(SB_HORZ)) peer->ShowScroll(SB_VERT, show != 0);
}

void CWnd::ReportAccessible(lorv::AccessEvent event) const {
  if (m_hWnd != nullptr) lorv::DesktopInForce().ReportAccessible(m_hWnd, event, 0);
}

void CWnd::ReportAccessibleCell(lorv::AccessEvent event, lorv::CellAddress cell) const {
  if (m_hWnd != nullptr)
    lorv::DesktopInForce().ReportAccessible(m_hWnd, event, lorv::NumberOfCell(m_hWnd, cell));
}
