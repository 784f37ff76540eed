#include <QTimerEvent>
#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/models/class_names.h"
#include "platform/models/message_values.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "platform/qt/window/qt_window.h"

// How a window begins and ends, what it tells its parent, and its default conduct.

namespace lorv {
namespace {

// The surface asks the window's thread to show what was drawn. It knows the window by handle only.
std::function<void()> ShowLater(QtDesk& desk, HWND handle) {
  return [mailbox = desk.Mailbox(), &desk, handle] {
    mailbox->Leave([&desk, handle] {
      if (const auto window = desk.At(handle)) window->ShowChanges();
    });
  };
}

}  // namespace

QtWindow::QtWindow(QtDesk& desk, HWND handle, const WindowRequest& request)
    : desk_(desk),
      handle_(handle),
      kind_(request.kind),
      class_name_(ClassNameOf(request)),
      text_(request.text),
      style_(request.style & ~WS_VISIBLE),
      ex_style_(request.ex_style),
      id_(request.id),
      font_(DialogFace()),
      surface_(std::make_shared<QtSurface>(SIZE{0, 0}, ShowLater(desk, handle))) {
  ((style_ & WS_CHILD) != 0 ? parent_ : owner_) = request.parent;
  for (SCROLLINFO& bar : scroll_) bar.nMax = 100;
}

void QtWindow::Start(QWidget* widget, QWidget* pane) {
  widget_ = widget;
  born_ = desk_.EventCount();
  pane_ = pane == nullptr ? widget : pane;
  watcher_ = new QtWatcher(widget);
  Watch(widget);
  if (pane_ != widget) Watch(pane_);
  // Where the focus goes is decided by the messages, not by the widget set.
  widget->setFocusPolicy(Qt::NoFocus);
  pane_->setMouseTracking(true);
  widget->setMouseTracking(true);
  if ((style_ & WS_DISABLED) != 0 && parent_ != nullptr) widget->setEnabled(false);
}

void QtWindow::Begin() {
  watcher_->Serve(this);
}

void QtWindow::Watch(QWidget* part) {
  part->installEventFilter(watcher_);
}

CString QtWindow::ClassName() const {
  return alive_ ? class_name_ : CString();
}

void QtWindow::Destroy() {
  if (ending_ || !alive_) return;
  const auto keep = shared_from_this();
  ending_ = true;
  for (const HWND owned : desk_.OwnedBy(handle_))
    if (const auto window = desk_.At(owned)) window->Destroy();
  if ((style_ & WS_VISIBLE) != 0) {
    style_ &= ~WS_VISIBLE;
    LoseFocusWithin();
  }
  TellOfEnd();
  End();
}

void QtWindow::TellOfEnd() {
  const auto keep = shared_from_this();
  ending_ = true;
  DeliverMessage(handle_, WM_DESTROY, 0, 0);
  for (const HWND child : Children())
    if (const auto window = desk_.At(child); window != nullptr && !window->ending_) window->TellOfEnd();
}

void QtWindow::End() {
  const auto keep = shared_from_this();
  ending_ = true;
  while (!children_.empty()) {
    const HWND child = children_.back();
    children_.pop_back();
    if (const auto window = desk_.At(child)) window->End();
  }
  if (!alive_) return;
  DeliverMessage(handle_, WM_NCDESTROY, 0, 0);
  if (!alive_) return;
  if (const auto parent = desk_.At(parent_)) std::erase(parent->children_, handle_);
  alive_ = false;
  desk_.Forget(handle_);
  UnmapWindow(handle_);
  watcher_->Serve(nullptr);
  watcher_ = nullptr;
  pane_ = nullptr;
  desk_.Bury(std::exchange(widget_, nullptr), born_);
}

std::shared_ptr<QtWindow> QtWindow::Living(const QtDesk& desk, HWND handle, const QtWindow* window) {
  std::shared_ptr<QtWindow> found = desk.At(handle);
  return found.get() == window ? found : nullptr;
}

void QtWindow::Notify(UINT code) {
  const HWND receiver = parent_ == nullptr ? owner_ : parent_;
  if (receiver != nullptr)
    DeliverMessage(receiver, WM_COMMAND, MAKEWPARAM(static_cast<LONG_PTR>(id_), static_cast<LONG_PTR>(code)),
                   reinterpret_cast<LPARAM>(handle_));
}

void QtWindow::Note(UINT code) {
  notes_.push_back(code);
  if (notes_due_) return;
  // The user did it at the widget itself: its code is still running.
  notes_due_ = true;
  desk_.Mailbox()->Leave([&desk = desk_, handle = handle_] {
    if (const auto window = desk.At(handle)) window->SendNotes();
  });
}

void QtWindow::SendNotes() {
  notes_due_ = false;
  if (notes_.empty()) return;
  const auto keep = shared_from_this();
  const std::vector<UINT> notes = std::exchange(notes_, {});
  for (const UINT code : notes)
    if (alive_) Notify(code);
}

void QtWindow::SetTimer(UINT_PTR id, UINT milliseconds) {
  if (!alive_) return;
  KillTimer(id);
  constexpr UINT kLongest = 0x7FFFFFFF;
  timers_[id] = watcher_->startTimer(static_cast<int>(std::clamp(milliseconds, 1U, kLongest)));
}

bool QtWindow::KillTimer(UINT_PTR id) {
  const auto found = timers_.find(id);
  if (!alive_ || found == timers_.end()) return false;
  watcher_->killTimer(found->second);
  timers_.erase(found);
  return true;
}

void QtWindow::TakeTimer(int timer) {
  const auto keep = shared_from_this();
  const QtDesk::Event event(desk_);
  const auto found = std::find_if(timers_.begin(), timers_.end(),
                                  [timer](const auto& pair) { return pair.second == timer; });
  if (found != timers_.end()) desk_.Deliver(desk_.MessageNow(handle_, WM_TIMER, found->first, 0));
}

void QtWatcher::timerEvent(QTimerEvent* event) {
  if (window_ != nullptr) window_->TakeTimer(event->timerId());
}

LRESULT QtWindow::Default(UINT message, WPARAM w, LPARAM l) {
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
      PaintCanvas(dirty);
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_ACTIVATE:
      return ActivateMessage(w);
    case WM_SETCURSOR:
      if (parent_ != nullptr && DeliverMessage(parent_, message, w, l) != 0) return TRUE;
      if (alive_) desk_.SetCursor(kind_ == WindowKind::Edit ? kCursorText : kCursorArrow);
      return FALSE;
    case WM_MOUSEWHEEL:
    case WM_CONTEXTMENU:
      return parent_ == nullptr ? 0 : DeliverMessage(parent_, message, w, l);
    case WM_RBUTTONUP: {
      const CPoint at = PointOf(l) + ClientOrigin();
      return DeliverMessage(handle_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle_),
                            MAKELPARAM(at.x, at.y));
    }
    default:
      return 0;
  }
}

LRESULT QtWindow::TextMessage(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_GETTEXTLENGTH) return Text().GetLength();
  if (message == WM_GETTEXT) return CopyOut(Text(), reinterpret_cast<LPTSTR>(l), w);
  KeepText(reinterpret_cast<LPCTSTR>(l));
  const WidgetWork work(*this);
  if (parent_ == nullptr) widget_->setWindowTitle(ToQt(text_.View()));
  TextChanged();
  Invalidate(nullptr);
  return TRUE;
}

LRESULT QtWindow::ActivateMessage(WPARAM w) {
  if (LOWORD(w) == WA_INACTIVE) {
    last_focus = desk_.Within(handle_, desk_.Focus()) ? desk_.Focus() : nullptr;
    return 0;
  }
  const auto last = desk_.At(last_focus);
  const bool again = kind_ == WindowKind::Dialog && last != nullptr && last->Seen();
  desk_.MoveFocus(again ? last_focus : handle_);
  return 0;
}

}  // namespace lorv
