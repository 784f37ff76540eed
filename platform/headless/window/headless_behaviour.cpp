#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/message_values.h"

// The default conduct of a window that is no control.

namespace lorv {

LRESULT HeadlessWindow::Default(UINT message, WPARAM w, LPARAM l) {
  if (!alive_) return 0;
  const auto keep = shared_from_this();
  switch (message) {
    case WM_CLOSE:
      Destroy();
      return 0;
    case WM_SYSCOMMAND:
      return (w & 0xFFF0U) == SC_CLOSE ? DeliverMessage(handle_, WM_CLOSE, 0, 0) : 0;
    case WM_SETTEXT:
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
      return TextMessage(message, w, l);
    case WM_PAINT: {
      RECT dirty = {};
      PaintSelf(*PaintCanvas(dirty));
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_ACTIVATE:
      return ActivateMessage(w);
    case WM_SETCURSOR:
      if (parent_ != nullptr && DeliverMessage(parent_, message, w, l) != 0) return TRUE;
      desktop_.SetCursor(kind_ == WindowKind::Edit ? kCursorText : kCursorArrow);
      return FALSE;
    case WM_MOUSEWHEEL:
      return parent_ == nullptr ? 0 : DeliverMessage(parent_, message, w, l);
    case WM_RBUTTONUP: {
      const CPoint at = PointOf(l) + ClientOrigin();
      return DeliverMessage(handle_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle_),
                            MAKELPARAM(at.x, at.y));
    }
    case WM_CONTEXTMENU:
      return parent_ == nullptr ? 0 : DeliverMessage(parent_, message, w, l);
    default:
      return 0;
  }
}

LRESULT HeadlessWindow::TextMessage(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_GETTEXTLENGTH) return Text().GetLength();
  if (message == WM_SETTEXT) {
    text_ = reinterpret_cast<LPCTSTR>(l);
    Invalidate(nullptr);
    return TRUE;
  }
  return CopyOut(Text(), reinterpret_cast<LPTSTR>(l), w);
}

LRESULT HeadlessWindow::ActivateMessage(WPARAM w) {
  if (LOWORD(w) == WA_INACTIVE) {
    last_focus = desktop_.Within(handle_, desktop_.Focus()) ? desktop_.Focus() : nullptr;
    return 0;
  }
  const auto last = desktop_.At(last_focus);
  const bool again = kind_ == WindowKind::Dialog && last != nullptr && last->Seen();
  desktop_.MoveFocus(again ? last_focus : handle_);
  return 0;
}

}  // namespace lorv
