#include "platform/models/window/window_model.h"

#include <algorithm>
#include <utility>

#include "framework/ports/drop_port.h"
#include "framework/ports/window_map.h"
#include "platform/models/desktop/desktop_model.h"
#include "platform/models/first_fault.h"
#include "platform/models/window/class_names.h"

// The state of a window, and the messages about its changes. Its default behaviour is in window_default.cpp.
// Every call that reaches a handler may end the window: the object is held by a pointer of its own
// meanwhile, and `alive_` is asked behind it.

namespace lorv {

WindowModel::WindowModel(DesktopModel& desktop, HWND handle, const WindowRequest& request)
    : desktop_(desktop),
      handle_(handle),
      kind_(request.kind),
      class_name_(ClassNameOf(request)),
      text_(request.text),
      style_(Without(request.style, WS_VISIBLE)),
      ex_style_(request.ex_style),
      id_(request.id),
      font_(desktop.DialogFont()),
      dpi_(desktop.DpiFor(request)) {
  ((style_ & WS_CHILD) != 0 ? parent_ : owner_) = request.parent;
  // The desktop's font is made for the first screen; the window may begin on another one.
  font_.lfHeight = font_.lfHeight * dpi_ / std::max(1, desktop.Dpi());
}

std::shared_ptr<WindowModel> WindowModel::ParentModel() const {
  return parent_ == nullptr ? nullptr : desktop_.At(parent_);
}

bool WindowModel::Seen() const {
  if (!alive_ || (style_ & WS_VISIBLE) == 0) return false;
  const auto parent = ParentModel();
  // A child whose parent is gone is not seen, whatever its own style says.
  return parent_ == nullptr || (parent != nullptr && parent->Seen());
}

bool WindowModel::Blocked() const {
  if ((style_ & WS_DISABLED) != 0) return true;
  const auto parent = ParentModel();
  return parent != nullptr && parent->Blocked();
}

void WindowModel::MouseGone() {
  if (std::exchange(leave_, false)) DeliverMessage(handle_, WM_MOUSELEAVE, 0, 0);
}

void WindowModel::SetStyle(DWORD style) {
  if (!alive_) return;
  StyleChanged(std::exchange(style_, style));
  PlaceChanged();
}

void WindowModel::SetExStyle(DWORD style) {
  ex_style_ = style;
  SetStyle(style_);
}

void WindowModel::RememberPlace(CPoint at) {
  reported_at_ = at;
  reported_client_ = ClientRect();
}

void WindowModel::ReportPlace(CPoint at) {
  const auto keep = shared_from_this();
  const CRect client(ClientRect());
  const bool sized = client != reported_client_;
  reported_client_ = client;
  if (std::exchange(reported_at_, at) != at) DeliverMessage(handle_, WM_MOVE, 0, MAKELPARAM(at.x, at.y));
  // Moved alone, the picture is still right.
  if (!alive_ || !sized) return;
  ScrollChanged();
  Invalidate(nullptr);
  DeliverMessage(handle_, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}

void WindowModel::Show(int how) {
  const bool on = how != SW_HIDE;
  if (!alive_) return;
  const auto keep = shared_from_this();
  if (((style_ & WS_VISIBLE) != 0) != on) {
    DeliverMessage(handle_, WM_SHOWWINDOW, static_cast<WPARAM>(on), 0);
    if (!alive_) return;
    style_ = on ? style_ | WS_VISIBLE : Without(style_, WS_VISIBLE);
    // What changed while it was hidden was not asked to be painted.
    if (on) Invalidate(nullptr);
    if (!on) LoseFocusWithin();
  }
  if (!alive_) return;
  VisibleChanged(how);
  PlaceChanged();
  const bool activates = how != SW_SHOWNA && how != SW_SHOWNOACTIVATE && how != SW_SHOWMINNOACTIVE;
  if (alive_ && on && activates && parent_ == nullptr && kind_ != WindowKind::Popup) Activate();
}

// A window that goes out of sight leaves the focus to its parent, a top-level window to the one below it.
void WindowModel::LoseFocusWithin() {
  if (desktop_.Capture() == handle_) desktop_.SetCapture(nullptr);
  if (!desktop_.Within(handle_, desktop_.FocusedWindow()) && desktop_.Active() != handle_) return;
  if (parent_ != nullptr) {
    desktop_.MoveFocus(parent_);
  } else {
    desktop_.ActivateNext(handle_, owner_);
  }
}

void WindowModel::Enable(bool on) {
  // Nothing is reported where nothing changes.
  if (!alive_ || on == ((style_ & WS_DISABLED) == 0)) return;
  const auto keep = shared_from_this();
  if (!on) {
    // Before the style: a drag ends while the window can still answer.
    DeliverMessage(handle_, WM_CANCELMODE, 0, 0);
    if (!alive_) return;
    style_ |= WS_DISABLED;
    if (desktop_.FocusedWindow() == handle_) desktop_.MoveFocus(nullptr);
  } else {
    style_ = Without(style_, WS_DISABLED);
  }
  if (alive_) EnabledChanged();
  DeliverMessage(handle_, WM_ENABLE, static_cast<WPARAM>(on), 0);
}

void WindowModel::Focus() {
  if (alive_ && (style_ & WS_DISABLED) == 0) desktop_.MoveFocus(handle_);
}

void WindowModel::Activate() {
  if (alive_) desktop_.ActivateTop(desktop_.TopOf(handle_));
}

void WindowModel::SetText(const CString& text) {
  if (alive_) DeliverMessage(handle_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.GetString()));
}

void WindowModel::SetFont(const LOGFONT& font) {
  if (!alive_) return;
  font_ = font;
  FontChanged();
}

void WindowModel::SetScroll(int bar, const SCROLLINFO& info) {
  if (!alive_ || (bar != SB_HORZ && bar != SB_VERT)) return;
  const auto keep = shared_from_this();
  Bar(bar).Set(info);
  if ((info.fMask & (SIF_RANGE | SIF_PAGE)) != 0 && (info.fMask & SIF_DISABLENOSCROLL) == 0)
    ShowScroll(bar, Bar(bar).Scrolls());
  if (alive_) ScrollChanged();
}

void WindowModel::ShowScroll(int bar, bool on) {
  const DWORD bit = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
  if (alive_ && ((style_ & bit) != 0) != on) SetStyle(on ? style_ | bit : Without(style_, bit));
}

void WindowModel::ScrollByUser(int bar, int code, int position) {
  if (!alive_) return;
  const auto keep = shared_from_this();
  const bool drags = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
  // The message carries 16 bits; SIF_TRACKPOS has all 32 of them.
  if (drags) Bar(bar).Drag(position);
  const int carried = drags ? Bar(bar).Info().nTrackPos : 0;
  // The bar comes back to the window's position even if a handler throws.
  struct DragEnd {
    ~DragEnd() {
      if (ends) bar.EndDrag();
    }
    ScrollModel& bar;
    bool ends;
  };
  const DragEnd end{Bar(bar), code != SB_THUMBTRACK};
  DeliverMessage(handle_, bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, carried), 0);
}

void WindowModel::SetCompositionCaret(const RECT& caret) {
  if (!alive_) return;
  composition_caret_ = caret;
  CompositionCaretChanged();
}

void WindowModel::EnableComposition(bool on) {
  if (!alive_ || std::exchange(composes_, on) == on) return;
  CompositionCaretChanged();
}

void WindowModel::ReportReaders(UINT code) {
  const bool value = (kind_ == WindowKind::Edit && code == EN_CHANGE) ||
                     (kind_ == WindowKind::Combo && code == CBN_EDITCHANGE);
  const bool chosen = (kind_ == WindowKind::List && code == LBN_SELCHANGE) ||
                      (kind_ == WindowKind::Combo && code == CBN_SELCHANGE);
  if (value) desktop_.ControlChanged(handle_, AccessEvent::Value);
  if (chosen) desktop_.ControlChanged(handle_, AccessEvent::Selection);
  if (kind_ == WindowKind::Button && code == BN_CLICKED) desktop_.ControlChanged(handle_, AccessEvent::State);
}

void WindowModel::Notify(UINT code) {
  ReportReaders(code);
  const HWND receiver = parent_ == nullptr ? owner_ : parent_;
  if (receiver != nullptr)
    DeliverMessage(receiver, WM_COMMAND, MAKEWPARAM(static_cast<LONG_PTR>(id_), static_cast<LONG_PTR>(code)),
                   reinterpret_cast<LPARAM>(handle_));
}

// What has begun to end ends, even if a handler throws on the way.
void WindowModel::Destroy() {
  if (ending_ || !alive_) return;
  const auto keep = shared_from_this();
  ending_ = true;
  FirstFault fault;
  EndOwned(fault);
  if ((style_ & WS_VISIBLE) != 0) {
    style_ = Without(style_, WS_VISIBLE);
    fault.Run([&] { LoseFocusWithin(); });
  }
  // From the top down, so a parent can still ask its children.
  SendDestroy(fault);
  // From the bottom up: the handles go.
  End(fault);
  fault.Rethrow();
}

void WindowModel::EndOwned(FirstFault& fault) {
  for (const HWND owned : desktop_.OwnedBy(handle_))
    if (const auto window = desktop_.At(owned)) fault.Run([&] { window->Destroy(); });
}

void WindowModel::SendDestroy(FirstFault& fault) {
  const auto keep = shared_from_this();
  ending_ = true;
  fault.Run([&] { DeliverMessage(handle_, WM_DESTROY, 0, 0); });
  for (const HWND child : Children())
    if (const auto window = desktop_.At(child); window != nullptr && !window->ending_)
      window->SendDestroy(fault);
}

void WindowModel::End(FirstFault& fault) {
  const auto keep = shared_from_this();
  ending_ = true;
  while (!children_.empty()) {
    const HWND child = children_.back();
    // Taken off first, so that the loop ends whatever the handlers of the child do.
    children_.pop_back();
    if (const auto window = desktop_.At(child)) window->End(fault);
  }
  if (!alive_) return;
  fault.Run([&] { DeliverMessage(handle_, WM_NCDESTROY, 0, 0); });
  if (!alive_) return;
  if (const auto parent = desktop_.At(parent_)) std::erase(parent->children_, handle_);
  alive_ = false;
  desktop_.Forget(handle_);
  UnmapWindow(handle_);
  UnmapDropReceiver(handle_);
  // What a handler made for a window that was ending goes with it; no other can come any more.
  EndOwned(fault);
  Ended();
}

}  // namespace lorv
