#include <QApplication>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_keys.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_window.h"

// What the user does at the widgets of a window, turned into messages. The widgets themselves see a key or a
// click only when the message comes back as the default conduct.

namespace lorv {
namespace {

UINT PressOf(Qt::MouseButton button, QEvent::Type type) {
  const UINT offset = type == QEvent::MouseButtonPress ? 0 : (type == QEvent::MouseButtonRelease ? 1 : 2);
  switch (button) {
    case Qt::LeftButton:
      return WM_LBUTTONDOWN + offset;
    case Qt::RightButton:
      return WM_RBUTTONDOWN + offset;
    case Qt::MiddleButton:
      return WM_MBUTTONDOWN + offset;
    default:
      return WM_NULL;
  }
}

UINT MessageOf(const QMouseEvent& event) {
  return event.type() == QEvent::MouseMove ? WM_MOUSEMOVE : PressOf(event.button(), event.type());
}

bool IsDown(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
         message == WM_LBUTTONDBLCLK;
}

}  // namespace

bool QtWindow::Take(QObject* receiver, QEvent& event) {
  const auto keep = shared_from_this();
  const QtDesk::Event working(desk_);
  switch (event.type()) {
    case QEvent::Paint:
      return TakePaint(receiver, static_cast<QPaintEvent&>(event));
    case QEvent::Resize:
    case QEvent::Move:
      // Within a call of ours the caller reports, when the widget has finished. A widget lays out its pane
      // after it heard of its own size, the first time when it is shown.
      if (working_ == 0) ReportPlace();
      return false;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      // Inner parts come and go without a word: a dropped list is not the focus.
      if (receiver == widget_) TakeFocus(event);
      return false;
    case QEvent::WindowActivate:
      if (receiver == widget_ && parent_ == nullptr) desk_.FocusArrived(handle_);
      return false;
    case QEvent::Leave:
      if (receiver == pane_) desk_.Hover(nullptr);
      return false;
    case QEvent::Close:
      return receiver == widget_ && TakeClose(event);
    case QEvent::ContextMenu:
      return true;
    default:
      return TakeInput(receiver, event);
  }
}

bool QtWindow::TakeInput(QObject* receiver, QEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride:
      // Keys are for the window, not for shortcuts of a program around it.
      event.accept();
      return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return TakeKey(static_cast<QKeyEvent&>(event));
    case QEvent::InputMethod:
      return TakeComposition(event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      return TakeMouse(receiver, static_cast<QMouseEvent&>(event));
    case QEvent::Wheel:
      return TakeWheel(static_cast<QWheelEvent&>(event));
    default:
      return false;
  }
}

bool QtWindow::TakeClose(QEvent& event) {
  // Only the window class closes: the widget goes with its window.
  event.ignore();
  if (!Blocked()) DeliverMessage(handle_, WM_CLOSE, 0, 0);
  return true;
}

void QtWindow::TakeFocus(QEvent& event) {
  const Qt::FocusReason reason = static_cast<QFocusEvent&>(event).reason();
  if (event.type() == QEvent::FocusIn) {
    if (reason != Qt::PopupFocusReason) desk_.FocusArrived(handle_);
  } else if (reason == Qt::ActiveWindowFocusReason) {
    desk_.FocusLeft();
  }
}

bool QtWindow::TakeKey(QKeyEvent& event) {
  event.accept();
  const int key = VirtualKeyOf(event);
  const bool down = event.type() == QEvent::KeyPress;
  desk_.KeepKey(key, down, event.modifiers());
  if (Blocked()) return true;
  const bool system =
      (event.modifiers() & Qt::AltModifier) != 0 && (event.modifiers() & Qt::ControlModifier) == 0;
  const LPARAM bits = KeyBits(event, system);
  UINT message = down ? WM_KEYDOWN : WM_KEYUP;
  if (system) message = down ? WM_SYSKEYDOWN : WM_SYSKEYUP;
  MSG pressed = desk_.MessageNow(KeyTarget(), message, static_cast<WPARAM>(key), bits);
  if (OfferMessage(pressed) || !desk_.StillThere(pressed.hwnd)) return true;
  // The characters wait behind what the key itself brings about.
  const CString characters = down ? CharactersOf(event) : CString();
  for (int i = 0; i < characters.GetLength(); ++i)
    desk_.Post(pressed.hwnd, system ? WM_SYSCHAR : WM_CHAR, characters.GetAt(i), bits);
  DeliverMessage(pressed.hwnd, pressed.message, pressed.wParam, pressed.lParam);
  return true;
}

bool QtWindow::TakeComposition(QEvent& event) {
  auto& composition = static_cast<QInputMethodEvent&>(event);
  if (Blocked()) return true;
  // What the input method commits is typed; what it is still composing the widget shows itself.
  const QString committed = composition.commitString();
  for (const QChar unit : committed) desk_.Post(KeyTarget(), WM_CHAR, unit.unicode(), 1);
  if (committed.isEmpty()) return PaintsSelf();
  event.accept();
  if (!PaintsSelf() && alive_) {
    const WidgetWork work(*this);
    QInputMethodEvent ended;
    static_cast<QObject*>(widget_)->event(&ended);
  }
  return true;
}

bool QtWindow::TakeMouse(QObject* receiver, QMouseEvent& event) {
  auto* const part = static_cast<QWidget*>(receiver);
  // Inner parts of a control are the widget's own affair.
  if (part != widget_ && part != pane_) return Blocked();
  event.accept();
  const CPoint screen = FromQt(part->mapToGlobal(event.position().toPoint()));
  desk_.KeepMouse(screen, event.buttons(), event.modifiers());
  const UINT message = MessageOf(event);
  const HWND captured = desk_.Capture();
  auto target = captured != nullptr ? desk_.At(captured) : desk_.At(handle_);
  while (captured == nullptr && target != nullptr && (target->Style() & WS_DISABLED) != 0)
    target = desk_.At(target->Parent());
  if (target != nullptr && message != WM_NULL && !target->Blocked()) target->PlayMouse(message, screen);
  return true;
}

void QtWindow::PlayMouse(UINT message, CPoint screen) {
  const auto keep = shared_from_this();
  const bool captured = desk_.Capture() == handle_;
  desk_.Hover(handle_);
  if (IsDown(message)) {
    desk_.ClickedIn();
    const auto top = desk_.At(desk_.TopOf(handle_));
    const bool activates = top != nullptr && top->Kind() != WindowKind::Popup;
    if (activates && (top->ExStyle() & WS_EX_NOACTIVATE) == 0) desk_.ActivateTop(top->Handle());
  }
  if (!alive_) return;
  const CPoint at = screen - CSize(CPoint(ClientOrigin()));
  if (!captured && CRect(ClientRect()).PtInRect(at) == 0) return;
  if (!captured)
    DeliverMessage(handle_, WM_SETCURSOR, reinterpret_cast<WPARAM>(handle_),
                   MAKELPARAM(HTCLIENT, static_cast<LONG_PTR>(message)));
  if (alive_) desk_.Deliver(desk_.MessageNow(handle_, message, desk_.HeldKeys(), MAKELPARAM(at.x, at.y)));
}

bool QtWindow::TakeWheel(QWheelEvent& event) {
  event.accept();
  const CPoint screen = FromQt(event.globalPosition().toPoint());
  desk_.KeepMouse(screen, event.buttons(), event.modifiers());
  const HWND focus = desk_.Focus();
  const auto target = desk_.At(focus == nullptr || !desk_.StillThere(focus) ? handle_ : focus);
  if (target == nullptr || target->Blocked()) return true;
  const QPoint turned = event.angleDelta();
  const UINT message = turned.y() != 0 ? WM_MOUSEWHEEL : WM_MOUSEHWHEEL;
  const int delta = turned.y() != 0 ? turned.y() : -turned.x();
  desk_.Deliver(desk_.MessageNow(target->Handle(), message,
                                 MAKEWPARAM(static_cast<LONG_PTR>(desk_.HeldKeys()), delta),
                                 MAKELPARAM(screen.x, screen.y)));
  return true;
}

void QtWindow::MouseGone() {
  if (std::exchange(leave_, false)) DeliverMessage(handle_, WM_MOUSELEAVE, 0, 0);
}

}  // namespace lorv
