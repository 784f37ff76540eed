#include <algorithm>

#include "framework/drawing/geometry.h"
#include "platform/models/carried_fault.h"
#include "platform/win32/desktop/modal_loop.h"
#include "platform/win32/window/win32_window.h"

// Place, looks, text and bars of a window: each a question to the system. Styles that we add for our own sake
// are left out of the answer, so a class sees what it asked for.

namespace lorv {
namespace {

constexpr UINT kOnlySize = SWP_NOZORDER | SWP_NOACTIVATE;
constexpr UINT kOnlyFrame = kOnlySize | SWP_NOMOVE | SWP_NOSIZE | SWP_FRAMECHANGED;

// Lines that a combo shows at least when it is opened.
constexpr int kOpenedLines = 8;

}  // namespace

DWORD Win32Window::Style() const {
  return Exists() ? static_cast<DWORD>(GetWindowLongPtrW(handle_, GWL_STYLE)) & ~added_style_ : 0;
}

void Win32Window::SetStyle(DWORD style) {
  if (!Exists()) return;
  CarriedFault::CallOut([&] {
    SetWindowLongPtrW(handle_, GWL_STYLE, static_cast<LONG_PTR>(style | added_style_));
    return SetWindowPos(handle_, nullptr, 0, 0, 0, 0, kOnlyFrame);
  });
}

DWORD Win32Window::ExStyle() const {
  return Exists() ? static_cast<DWORD>(GetWindowLongPtrW(handle_, GWL_EXSTYLE)) : 0;
}

void Win32Window::SetExStyle(DWORD style) {
  if (!Exists()) return;
  CarriedFault::CallOut([&] {
    SetWindowLongPtrW(handle_, GWL_EXSTYLE, static_cast<LONG_PTR>(style));
    return SetWindowPos(handle_, nullptr, 0, 0, 0, 0, kOnlyFrame);
  });
}

// The system counts the opened list to a combo's height, and would open none in the height of a cell.
int Win32Window::HeightToAsk(int height) const {
  if (kind_ != WindowKind::Combo) return height;
  const DWORD style = handle_ == nullptr ? request_->style : Style();
  if ((style & 3U) == CBS_SIMPLE) return height;
  // The letters, and four pixels above and below them.
  const int line = -SystemDialogFont().lfHeight + 8;
  return std::max(height, (kOpenedLines + 1) * line);
}

void Win32Window::Place(const RECT& place) {
  if (!Exists()) return;
  const CRect to(place);
  CarriedFault::CallOut([&] {
    return SetWindowPos(handle_, nullptr, to.left, to.top, to.Width(), HeightToAsk(to.Height()), kOnlySize);
  });
}

void Win32Window::Raise() {
  if (!Exists()) return;
  constexpr UINT kOnlyOrder = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
  CarriedFault::CallOut([&] { return SetWindowPos(handle_, HWND_TOP, 0, 0, 0, 0, kOnlyOrder); });
}

RECT Win32Window::WindowRect() const {
  RECT rect = {0, 0, 0, 0};
  if (Exists()) GetWindowRect(handle_, &rect);
  return rect;
}

RECT Win32Window::ClientRect() const {
  RECT rect = {0, 0, 0, 0};
  if (Exists()) GetClientRect(handle_, &rect);
  return rect;
}

POINT Win32Window::ClientOrigin() const {
  POINT origin = {0, 0};
  if (Exists()) ClientToScreen(handle_, &origin);
  return origin;
}

SIZE Win32Window::FrameSize(SIZE client) const {
  if (!Exists()) return {0, 0};
  const DWORD style = Style();
  const UINT dots = GetDpiForWindow(handle_);
  CRect rect(0, 0, client.cx, client.cy);
  // Those of its own screen: the plain calls answer for the first one.
  AdjustWindowRectExForDpi(&rect, style, FALSE, ExStyle(), dots);
  if ((style & WS_VSCROLL) != 0) rect.right += GetSystemMetricsForDpi(SM_CXVSCROLL, dots);
  if ((style & WS_HSCROLL) != 0) rect.bottom += GetSystemMetricsForDpi(SM_CYHSCROLL, dots);
  return rect.Size();
}

void Win32Window::Show(int how) {
  if (!Exists()) return;
  // A tip or a list must not take the activation, however it is asked to show.
  const bool activates = how != SW_HIDE && how != SW_SHOWNOACTIVATE;
  if (kind_ == WindowKind::Popup && activates) how = SW_SHOWNA;
  CarriedFault::CallOut([&] {
    // Before it hides: the system gives the activation away at that moment.
    if (how == SW_HIDE) FreeModalOwner(handle_);
    return ShowWindow(handle_, how);
  });
}

void Win32Window::Enable(bool on) {
  if (Exists()) CarriedFault::CallOut([&] { return EnableWindow(handle_, on ? TRUE : FALSE); });
}

void Win32Window::Focus() {
  if (Exists()) CarriedFault::CallOut([&] { return ::SetFocus(handle_); });
}

void Win32Window::Activate() {
  if (Exists()) CarriedFault::CallOut([&] { return SetForegroundWindow(GetAncestor(handle_, GA_ROOT)); });
}

CString Win32Window::Text() const {
  if (!Exists()) return {};
  return CarriedFault::CallOut([&] {
    CString text;
    const int room = GetWindowTextLengthW(handle_) + 1;
    const int length = GetWindowTextW(handle_, text.GetBuffer(room), room);
    // By what was copied: the length that was asked for may be larger than the text.
    text.ReleaseBuffer(length);
    return text;
  });
}

void Win32Window::SetText(const CString& text) {
  if (Exists()) CarriedFault::CallOut([&] { return SetWindowTextW(handle_, text); });
}

void Win32Window::SetFont(const LOGFONTW& font) {
  if (!Exists() || !ours_) return;
  // The former font is let go when the window has the new one.
  const auto fresh = SharedFont(font);
  CarriedFault::CallOut(
      [&] { return SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(fresh->Handle()), TRUE); });
  font_ = fresh;
}

LOGFONTW Win32Window::Font() const {
  LOGFONTW face = SystemDialogFont(Dpi());
  if (!Exists()) return face;
  const LRESULT font = CarriedFault::CallOut([&] { return SendMessageW(handle_, WM_GETFONT, 0, 0); });
  if (font != 0) GetObjectW(reinterpret_cast<HFONT>(font), sizeof(face), &face);
  return face;
}

void Win32Window::SetScroll(int bar, const SCROLLINFO& info) {
  if (!Exists()) return;
  SCROLLINFO sized = info;
  sized.cbSize = sizeof(sized);
  CarriedFault::CallOut([&] { return SetScrollInfo(handle_, bar, &sized, TRUE); });
}

SCROLLINFO Win32Window::Scroll(int bar) const {
  SCROLLINFO info = {};
  info.cbSize = sizeof(info);
  info.fMask = SIF_ALL;
  if (Exists()) GetScrollInfo(handle_, bar, &info);
  return info;
}

void Win32Window::ShowScroll(int bar, bool on) {
  if (Exists()) CarriedFault::CallOut([&] { return ShowScrollBar(handle_, bar, on ? TRUE : FALSE); });
}

void Win32Window::SetTimer(UINT_PTR id, UINT milliseconds) {
  if (Exists()) ::SetTimer(handle_, id, milliseconds, nullptr);
}

bool Win32Window::KillTimer(UINT_PTR id) {
  return Exists() && ::KillTimer(handle_, id) != 0;
}

void Win32Window::TrackLeave() {
  if (!Exists()) return;
  TRACKMOUSEEVENT wanted = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, handle_, 0};
  TrackMouseEvent(&wanted);
}

int Win32Window::Dpi() const {
  return Exists() ? static_cast<int>(GetDpiForWindow(handle_)) : 0;
}

}  // namespace lorv
