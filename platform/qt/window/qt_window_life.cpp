#include <QTimerEvent>
#include <algorithm>

#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/window/qt_window.h"

// How a window begins and ends, its timers, and what it reports late.

namespace lorv {
namespace {

// The surface asks the window's thread to show what was drawn. It knows the window by handle only.
std::function<void()> ShowLater(QtDesk& desk, HWND handle) {
  return [mailbox = desk.Mailbox(), &desk, handle] {
    mailbox->Leave([&desk, handle] {
      if (const auto window = desk.Window(handle)) window->ShowChanges();
    });
  };
}

}  // namespace

QtWindow::QtWindow(QtDesk& desk, HWND handle, const WindowRequest& request)
    : WindowModel(desk, handle, request),
      desk_(desk),
      surface_(std::make_shared<QtSurface>(SIZE{0, 0}, ShowLater(desk, handle))) {
  surface_->SetDpi(Dpi());
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
  // Of a top-level window only the input is refused: its widget would grey all that it holds.
  if ((Look() & WS_DISABLED) != 0 && Parent() != nullptr) widget->setEnabled(false);
}

void QtWindow::Begin() {
  watcher_->Serve(this);
}

void QtWindow::Watch(QWidget* part) {
  part->installEventFilter(watcher_);
}

void QtWindow::Ended() {
  watcher_->Serve(nullptr);
  watcher_ = nullptr;
  pane_ = nullptr;
  desk_.DeleteLater(std::exchange(widget_, nullptr), born_);
}

std::shared_ptr<QtWindow> QtWindow::Living(const QtDesk& desk, HWND handle, const QtWindow* window) {
  const auto found = desk.Window(handle);
  return found.get() == window ? found : nullptr;
}

void QtWindow::Note(UINT code) {
  notes_.push_back(code);
  if (notes_due_) return;
  // The user did it at the widget itself: its code is still running.
  notes_due_ = true;
  desk_.Mailbox()->Leave([&desk = desk_, handle = Handle()] {
    if (const auto window = desk.Window(handle)) window->SendNotes();
  });
}

void QtWindow::SendNotes() {
  notes_due_ = false;
  if (notes_.empty()) return;
  const auto keep = shared_from_this();
  const std::vector<UINT> notes = std::exchange(notes_, {});
  for (const UINT code : notes)
    if (Exists()) Notify(code);
}

void QtWindow::SetTimer(UINT_PTR id, UINT milliseconds) {
  if (!Exists()) return;
  KillTimer(id);
  constexpr UINT kLongest = 0x7FFFFFFF;
  // A timer of 0 would run as often as the loop turns and leave no time for anything else.
  timers_[id] = watcher_->startTimer(static_cast<int>(std::clamp(milliseconds, 1U, kLongest)));
}

bool QtWindow::KillTimer(UINT_PTR id) {
  const auto found = timers_.find(id);
  if (!Exists() || found == timers_.end()) return false;
  watcher_->killTimer(found->second);
  timers_.erase(found);
  return true;
}

void QtWindow::TakeTimer(int timer) {
  const auto keep = shared_from_this();
  const QtDesk::Event event(desk_);
  const auto found = std::find_if(timers_.begin(), timers_.end(),
                                  [timer](const auto& pair) { return pair.second == timer; });
  // The timer may have been ended by a handler since its event was made.
  if (found != timers_.end()) desk_.Deliver(desk_.MessageNow(Handle(), WM_TIMER, found->first, 0));
}

void QtWatcher::timerEvent(QTimerEvent* event) {
  CarriedFault::Guarded([&] {
    if (window_ != nullptr) window_->TakeTimer(event->timerId());
    return true;
  });
}

void QtWindow::PaintDefault() {
  RECT dirty = {};
  PaintCanvas(dirty);
}

}  // namespace lorv
