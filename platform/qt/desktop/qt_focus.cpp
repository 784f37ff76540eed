#include <QApplication>
#include <QCursor>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"

// Focus, activation, capture and the keys that are down.

namespace lorv {
namespace {

// Stands for any window that is not ours.
HWND ForeignWindow() {
  return reinterpret_cast<HWND>(static_cast<UINT_PTR>(1));
}

}  // namespace

// A widget of the program around us counts as another program's window.
bool QtDesk::IsForeign(const QWidget* widget) const {
  const auto holds = [this, widget](HWND top) {
    const auto window = At(top);
    return window != nullptr && window->Widget() == widget->window();
  };
  return widget != nullptr && std::none_of(tops_.begin(), tops_.end(), holds);
}

HWND QtDesk::Focus() const {
  if (focus_ != nullptr) return focus_;
  return elsewhere_ || IsForeign(QApplication::focusWidget()) ? ForeignWindow() : nullptr;
}

// A window that is made active before it is shown asks when it is.
void QtDesk::AskToActivate(HWND top) {
  QWidget* const widget = At(top)->Widget();
  if (!widget->isVisible() || QApplication::activeWindow() == widget) return;
  asked_ = top;
  widget->activateWindow();
  widget->raise();
}

void QtDesk::ActivateTop(HWND top) {
  const auto window = At(top);
  if (window == nullptr || (window->Style() & WS_DISABLED) != 0) return;
  if (active_ == top) return AskToActivate(top);
  const HWND former = std::exchange(active_, top);
  elsewhere_ = false;
  RaiseTop(top);
  AskToActivate(top);
  const auto pair = [](HWND other) { return reinterpret_cast<LPARAM>(other); };
  if (StillThere(former)) DeliverMessage(former, WM_ACTIVATE, WA_INACTIVE, pair(top));
  if (active_ == top && StillThere(top)) DeliverMessage(top, WM_ACTIVATE, WA_ACTIVE, pair(former));
}

void QtDesk::ActivateNext(HWND gone, HWND owner) {
  if (const HWND next = NextTop(gone, owner)) return ActivateTop(next);
  MoveFocus(nullptr);
  if (active_ == gone) active_ = nullptr;
}

void QtDesk::MoveFocus(HWND window) {
  if (window == focus_) return;
  if (window != nullptr && active_ != TopOf(window)) {
    ActivateTop(TopOf(window));
    // Activation may have set it, or a handler something else.
    if (!StillThere(window) || active_ != TopOf(window) || focus_ == window) return;
  }
  const HWND former = std::exchange(focus_, window);
  if (const auto fresh = At(window)) {
    fresh->Widget()->setFocus(Qt::OtherFocusReason);
  } else if (const auto last = At(former)) {
    last->Widget()->clearFocus();
  }
  if (StillThere(former)) DeliverMessage(former, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
  if (focus_ == window && StillThere(window))
    DeliverMessage(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(former), 0);
}

void QtDesk::FocusArrived(HWND window) {
  const HWND top = TopOf(window);
  // News of an activation that has been overtaken by another one.
  if (asked_ != nullptr && top != asked_) return;
  asked_ = nullptr;
  const auto at = At(top);
  if (at == nullptr || (at->Style() & WS_DISABLED) != 0) return;
  if (window == top || Within(window, focus_)) {
    ActivateTop(top);
  } else {
    MoveFocus(window);
  }
}

// Between two windows of ours nobody has the focus for a moment: it is lost if it stays away.
void QtDesk::FocusLeft() {
  constexpr int kMoment = 100;
  QTimer::singleShot(kMoment, [this, mailbox = mailbox_] { mailbox->Leave([this] { LeaveProgram(); }); });
}

void QtDesk::LeaveProgram() {
  const bool stays = QGuiApplication::focusWindow() != nullptr && !IsForeign(QApplication::activeWindow());
  if (stays || QApplication::activePopupWidget() != nullptr) return;
  if (asked_ != nullptr || active_ == nullptr) return;
  const HWND former = std::exchange(active_, nullptr);
  if (StillThere(former)) DeliverMessage(former, WM_ACTIVATE, WA_INACTIVE, 0);
  MoveFocus(nullptr);
  elsewhere_ = true;
}

void QtDesk::SetCapture(HWND window) {
  if (window != nullptr && !StillThere(window)) return;
  const HWND former = std::exchange(capture_, window);
  if (former == window) return;
  if (const auto last = At(former)) last->Widget()->releaseMouse();
  if (const auto fresh = At(window); fresh != nullptr && fresh->Widget()->isVisible())
    fresh->Widget()->grabMouse();
  if (StillThere(former)) DeliverMessage(former, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
}

SHORT QtDesk::KeyState(int key) const {
  const auto found = keys_.find(key);
  return found != keys_.end() && found->second ? static_cast<SHORT>(-0x8000) : SHORT{0};
}

void QtDesk::KeepKey(int key, bool down, Qt::KeyboardModifiers modifiers) {
  // An event knows the modifiers as they were before it.
  keys_[VK_SHIFT] = (modifiers & Qt::ShiftModifier) != 0;
  keys_[VK_CONTROL] = (modifiers & Qt::ControlModifier) != 0;
  keys_[VK_MENU] = (modifiers & Qt::AltModifier) != 0;
  if (key != 0) keys_[key] = down;
}

void QtDesk::KeepMouse(CPoint screen, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
  mouse_ = screen;
  keys_[VK_LBUTTON] = (buttons & Qt::LeftButton) != 0;
  keys_[VK_RBUTTON] = (buttons & Qt::RightButton) != 0;
  keys_[VK_MBUTTON] = (buttons & Qt::MiddleButton) != 0;
  KeepKey(0, false, modifiers);
}

WPARAM QtDesk::HeldKeys() const {
  constexpr std::pair<int, UINT> kHeld[] = {{VK_LBUTTON, MK_LBUTTON},
                                            {VK_RBUTTON, MK_RBUTTON},
                                            {VK_MBUTTON, MK_MBUTTON},
                                            {VK_SHIFT, MK_SHIFT},
                                            {VK_CONTROL, MK_CONTROL}};
  WPARAM held = 0;
  for (const auto& [key, bit] : kHeld)
    if (KeyState(key) != 0) held |= bit;
  return held;
}

void QtDesk::Hover(HWND window) {
  const HWND former = std::exchange(hovered_, window);
  if (former == window) return;
  if (const auto last = At(former)) last->MouseGone();
}

void QtDesk::SetCursorPosition(POINT at) {
  mouse_ = at;
  QCursor::setPos(at.x, at.y);
}

void QtDesk::SetCursor(int shape) {
  cursor_ = shape;
  static const std::map<int, Qt::CursorShape> shapes = {{kCursorArrow, Qt::ArrowCursor},
                                                        {kCursorText, Qt::IBeamCursor},
                                                        {kCursorWait, Qt::WaitCursor},
                                                        {kCursorCross, Qt::CrossCursor},
                                                        {kCursorSizeDiagonal, Qt::SizeFDiagCursor},
                                                        {kCursorSizeAcross, Qt::SizeHorCursor},
                                                        {kCursorSizeDown, Qt::SizeVerCursor},
                                                        {kCursorSizeAll, Qt::SizeAllCursor},
                                                        {kCursorHand, Qt::PointingHandCursor}};
  const auto window = At(capture_ != nullptr ? capture_ : hovered_);
  const auto known = shapes.find(shape);
  if (window == nullptr) return;
  window->Pane()->setCursor(known == shapes.end() ? Qt::ArrowCursor : known->second);
}

}  // namespace lorv
