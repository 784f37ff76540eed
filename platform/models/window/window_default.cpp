#include "framework/ports/window_map.h"
#include "platform/models/desktop/desktop_model.h"
#include "platform/models/message_values.h"
#include "platform/models/window/window_model.h"

// The default behaviour of a window that is no control: what the system does with a message that no handler
// took. It is asked through the message numbers alone, so window classes see no difference between desktops.

namespace lorv {

LRESULT WindowModel::Default(UINT message, WPARAM w, LPARAM l) {
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
    case WM_PAINT:
      PaintDefault();
      return 0;
    case WM_SETREDRAW:
      SetRedraw(w != 0);
      return 0;
    // The whole picture is painted in memory, so there is nothing to erase.
    case WM_ERASEBKGND:
      return 1;
    case WM_CANCELMODE:
      if (desktop_.Capture() == handle_) desktop_.SetCapture(nullptr);
      return 0;
    case WM_ACTIVATE:
      return ActivateMessage(w);
    case WM_SETCURSOR:
      return CursorMessage(message, w, l);
    // Not wanted here: the parent may scroll.
    case WM_MOUSEWHEEL:
    case WM_CONTEXTMENU:
      return parent_ == nullptr ? 0 : DeliverMessage(parent_, message, w, l);
    case WM_RBUTTONUP:
      return ContextMessage(l);
    case WM_DPICHANGED:
      Place(*reinterpret_cast<const RECT*>(l));
      return 0;
    case WM_IME_COMPOSITION:
      return CompositionMessage(l);
    default:
      return 0;
  }
}

LRESULT WindowModel::TextMessage(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_GETTEXTLENGTH) return Text().GetLength();
  // The caller's room counts units with the end of the text.
  if (message == WM_GETTEXT) return CopyOut(Text(), reinterpret_cast<LPTSTR>(l), w);
  KeepText(reinterpret_cast<LPCTSTR>(l));
  TextChanged();
  Invalidate(nullptr);
  return TRUE;
}

LRESULT WindowModel::ActivateMessage(WPARAM w) {
  const HWND focus = desktop_.FocusedWindow();
  if (LOWORD(w) == WA_INACTIVE) {
    last_focus_ = desktop_.Within(handle_, focus) ? focus : nullptr;
    return 0;
  }
  const auto last = desktop_.At(last_focus_);
  // A dialog gives the focus back to the control that had it.
  const bool again = kind_ == WindowKind::Dialog && last != nullptr && last->Seen();
  desktop_.MoveFocus(again ? last_focus_ : handle_);
  return 0;
}

LRESULT WindowModel::CursorMessage(UINT message, WPARAM w, LPARAM l) {
  // Parents first: a dialog may set one cursor for all its controls.
  if (parent_ != nullptr && DeliverMessage(parent_, message, w, l) != 0) return TRUE;
  if (alive_) desktop_.SetCursor(kind_ == WindowKind::Edit ? kCursorText : kCursorArrow);
  return FALSE;
}

LRESULT WindowModel::ContextMessage(LPARAM l) {
  const CPoint at = PointOf(l) + ClientOrigin();
  return DeliverMessage(handle_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle_), MAKELPARAM(at.x, at.y));
}

// What an input method committed comes as characters to a window class that left it.
LRESULT WindowModel::CompositionMessage(LPARAM l) {
  if ((l & GCS_RESULTSTR) == 0) return 0;
  const CString committed = CompositionNow().committed;
  for (int i = 0; i < committed.GetLength(); ++i) desktop_.Post(handle_, WM_CHAR, committed.GetAt(i), 1);
  return 0;
}

}  // namespace lorv
