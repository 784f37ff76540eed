#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"

// Focus, activation, capture and the keys that are down.

namespace lorv {

// A widget of the program around us counts as another program's window.
bool QtDesk::IsForeign(const QWidget* widget) const {
  const auto holds = [this, widget](HWND top) {
    const auto window = Window(top);
    return window != nullptr && window->Widget() == widget->window();
  };
  const std::vector<HWND> tops = Windows();
  return widget != nullptr && std::none_of(tops.begin(), tops.end(), holds);
}

HWND QtDesk::Focus() const {
  if (FocusedWindow() != nullptr) return FocusedWindow();
  return elsewhere_ || IsForeign(QApplication::focusWidget()) ? ForeignWindow() : nullptr;
}

// A window that is made active before it is shown asks when it is.
void QtDesk::ActiveChanged() {
  elsewhere_ = false;
  const auto top = Window(Active());
  if (top == nullptr || !top->Widget()->isVisible() || QApplication::activeWindow() == top->Widget()) return;
  asked_ = Active();
  top->Widget()->activateWindow();
  top->Widget()->raise();
}

void QtDesk::FocusChanged(HWND former) {
  if (const auto fresh = Window(FocusedWindow())) {
    fresh->ShowFocus();
  } else if (const auto last = Window(former)) {
    last->Widget()->clearFocus();
  }
}

void QtDesk::FocusArrived(HWND window) {
  const HWND top = TopOf(window);
  // News of an activation that has been overtaken by another one.
  if (asked_ != nullptr && top != asked_) return;
  asked_ = nullptr;
  const auto at = At(top);
  if (at == nullptr || (at->Style() & WS_DISABLED) != 0) return;
  if (window == top || Within(window, FocusedWindow())) {
    ActivateTop(top);
  } else {
    MoveFocus(window);
  }
}

// Between two windows of ours no window has the focus for a moment: it is lost if it stays away.
void QtDesk::FocusLeft() {
  // Milliseconds: longer than window systems take, and too short for a user to notice.
  constexpr int kMoment = 100;
  QTimer::singleShot(kMoment, [this, mailbox = mailbox_] { mailbox->Leave([this] { LeaveProgram(); }); });
}

void QtDesk::LeaveProgram() {
  const bool stays = QGuiApplication::focusWindow() != nullptr && !IsForeign(QApplication::activeWindow());
  // A menu takes the focus from the window that it belongs to, which stays active all the same.
  if (stays || QApplication::activePopupWidget() != nullptr) return;
  if (asked_ != nullptr || Active() == nullptr) return;
  elsewhere_ = true;
  LeaveWindows();
}

void QtDesk::CaptureChanged(HWND /*former*/) {
  if (mouse_grabber_ != nullptr) mouse_grabber_->releaseMouse();
  const auto fresh = Window(Capture());
  mouse_grabber_ = fresh == nullptr ? nullptr : fresh->Widget();
  // A widget that is not shown cannot have the mouse: one that holds it gets it for the window, which would
  // else wait for a button's way up for ever.
  while (mouse_grabber_ != nullptr && !mouse_grabber_->isVisible())
    mouse_grabber_ = mouse_grabber_->parentWidget();
  if (mouse_grabber_ != nullptr) mouse_grabber_->grabMouse();
}

void QtDesk::KeepKey(int key, bool down, Qt::KeyboardModifiers modifiers) {
  // An event knows the modifiers as they were before it.
  HoldKey(VK_SHIFT, (modifiers & Qt::ShiftModifier) != 0);
  HoldKey(VK_CONTROL, (modifiers & Qt::ControlModifier) != 0);
  HoldKey(VK_MENU, (modifiers & Qt::AltModifier) != 0);
  if (key != 0) HoldKey(key, down);
}

void QtDesk::KeepMouse(CPoint screen, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
  KeepCursorPosition(screen);
  HoldKey(VK_LBUTTON, (buttons & Qt::LeftButton) != 0);
  HoldKey(VK_RBUTTON, (buttons & Qt::RightButton) != 0);
  HoldKey(VK_MBUTTON, (buttons & Qt::MiddleButton) != 0);
  KeepKey(0, false, modifiers);
}

void QtDesk::SetCursorPosition(POINT at) {
  KeepCursorPosition(at);
  QCursor::setPos(at.x, at.y);
}

void QtDesk::SetCursor(int shape) {
  DesktopModel::SetCursor(shape);
  static const std::map<int, Qt::CursorShape> shapes = {{kCursorArrow, Qt::ArrowCursor},
                                                        {kCursorText, Qt::IBeamCursor},
                                                        {kCursorWait, Qt::WaitCursor},
                                                        {kCursorCross, Qt::CrossCursor},
                                                        {kCursorSizeDiagonal, Qt::SizeFDiagCursor},
                                                        {kCursorSizeAcross, Qt::SizeHorCursor},
                                                        {kCursorSizeDown, Qt::SizeVerCursor},
                                                        {kCursorSizeAll, Qt::SizeAllCursor},
                                                        {kCursorHand, Qt::PointingHandCursor}};
  const auto window = Window(Capture() != nullptr ? Capture() : Hovered());
  const auto known = shapes.find(shape);
  if (window == nullptr) return;
  if (const OwnCursor* const own = CursorOf(shape)) {
    const QImage picture(reinterpret_cast<const uchar*>(own->pixels.data()), own->size.cx, own->size.cy,
                         QImage::Format_ARGB32);
    window->Pane()->setCursor(QCursor(QPixmap::fromImage(picture.copy()), own->point.x, own->point.y));
    return;
  }
  window->Pane()->setCursor(known == shapes.end() ? Qt::ArrowCursor : known->second);
}

}  // namespace lorv
