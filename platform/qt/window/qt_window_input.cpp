#include <QApplication>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>

#include "framework/ports/drop_port.h"
#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_keys.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_window.h"

// What the user does at the widgets of a window, turned into messages. The widgets themselves see a key or a
// click only when the message comes back as the default behaviour.

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

// Where the caret stands in what is being composed: at its end unless the input method says otherwise.
int CaretOf(const QInputMethodEvent& event) {
  for (const QInputMethodEvent::Attribute& attribute : event.attributes())
    if (attribute.type == QInputMethodEvent::Cursor) return attribute.start;
  return static_cast<int>(event.preeditString().size());
}

UINT MessageOf(const QMouseEvent& event) {
  return event.type() == QEvent::MouseMove ? WM_MOUSEMOVE : PressOf(event.button(), event.type());
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
      if (working_ == 0) PlaceChanged();
      return false;
    case QEvent::ScreenChangeInternal:
      if (receiver == widget_ && Parent() == nullptr && working_ == 0) ScreenChanged();
      return false;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      // Inner parts come and go without a word: a dropped list is not the focus.
      if (receiver == widget_) TakeFocus(event);
      return false;
    case QEvent::WindowActivate:
      if (receiver == widget_ && Parent() == nullptr) desk_.FocusArrived(Handle());
      return false;
    case QEvent::Leave:
      if (receiver == pane_) desk_.Hover(nullptr);
      return false;
    case QEvent::Close:
      return receiver == widget_ && TakeClose(event);
    // The messages of the right button ask for the menu: the widget set must not bring one of its own.
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
    case QEvent::InputMethodQuery:
      return TakeQuery(event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      return TakeMouse(receiver, static_cast<QMouseEvent&>(event));
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
      return receiver == pane_ && MappedDropReceiver(Handle()) != nullptr && TakeDrag(event);
    case QEvent::Wheel:
      return TakeWheel(static_cast<QWheelEvent&>(event));
    case QEvent::PaletteChange:
      // What is painted has the colours of before.
      Invalidate(nullptr);
      return false;
    default:
      return false;
  }
}

bool QtWindow::TakeClose(QEvent& event) {
  // Only the window class closes: the widget goes with its window.
  event.ignore();
  if (!Blocked()) DeliverMessage(Handle(), WM_CLOSE, 0, 0);
  return true;
}

void QtWindow::TakeFocus(QEvent& event) {
  const Qt::FocusReason reason = static_cast<QFocusEvent&>(event).reason();
  if (event.type() == QEvent::FocusIn) {
    if (reason != Qt::PopupFocusReason) desk_.FocusArrived(Handle());
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
  // Filters and dialogs come first: they may take the key, or the window may go.
  if (OfferMessage(pressed) || !desk_.StillThere(pressed.hwnd)) return true;
  // The characters wait behind what the key itself brings about.
  const CString characters = down ? CharactersOf(event) : CString();
  for (int i = 0; i < characters.GetLength(); ++i)
    desk_.Post(pressed.hwnd, system ? WM_SYSCHAR : WM_CHAR, characters.GetAt(i), bits);
  DeliverMessage(pressed.hwnd, pressed.message, pressed.wParam, pressed.lParam);
  return true;
}

bool QtWindow::TakeComposition(QEvent& event) {
  auto& composing = static_cast<QInputMethodEvent&>(event);
  if (Blocked()) return true;
  const HWND target = KeyTarget();
  const CString committed = FromQt(composing.commitString());
  const HWND goes_on =
      desk_.Compose(target, {FromQt(composing.preeditString()), CaretOf(composing), committed});
  event.accept();
  const auto other = goes_on == target ? nullptr : desk_.Window(goes_on);
  if (other != nullptr) return other->ShowComposition(composing), true;
  if (PaintsSelf() || !Exists()) return true;
  // The widget shows what is composed; what is committed comes to it as characters.
  if (committed.IsEmpty()) return false;
  ShowComposition(QInputMethodEvent());
  return true;
}

void QtWindow::ShowComposition(const QInputMethodEvent& shown) {
  if (PaintsSelf() || !Exists()) return;
  const WidgetWork work(*this);
  QInputMethodEvent event(shown.preeditString(), shown.attributes());
  static_cast<QObject*>(widget_)->event(&event);
}

// Where the candidates of the input method are to stand, for windows that draw their caret themselves.
bool QtWindow::TakeQuery(QEvent& event) {
  if (!PaintsSelf()) return false;
  auto& query = static_cast<QInputMethodQueryEvent&>(event);
  if ((query.queries() & Qt::ImEnabled) != 0) query.setValue(Qt::ImEnabled, !Blocked() && TakesComposition());
  const Edges edges = Margins();
  const QRect caret = ToQt(CompositionCaret()).translated(edges.left, edges.top);
  if ((query.queries() & Qt::ImCursorRectangle) != 0) query.setValue(Qt::ImCursorRectangle, caret);
  if ((query.queries() & Qt::ImAnchorRectangle) != 0) query.setValue(Qt::ImAnchorRectangle, caret);
  query.accept();
  return true;
}

bool QtWindow::TakeMouse(QObject* receiver, QMouseEvent& event) {
  auto* const part = static_cast<QWidget*>(receiver);
  // Inner parts of a control are handled by the widget.
  if (part != widget_ && part != pane_) return Blocked();
  event.accept();
  const CPoint screen = FromQt(part->mapToGlobal(event.position().toPoint()));
  desk_.KeepMouse(screen, event.buttons(), event.modifiers());
  const UINT message = MessageOf(event);
  const HWND captured = desk_.Capture();
  auto target = captured != nullptr ? desk_.Window(captured) : desk_.Window(Handle());
  while (captured == nullptr && target != nullptr && (target->Style() & WS_DISABLED) != 0)
    target = desk_.Window(target->Parent());
  if (target != nullptr && message != WM_NULL && !target->Blocked()) target->PlayMouse(message, screen);
  return true;
}

void QtWindow::PlayMouse(UINT message, CPoint screen) {
  const auto keep = shared_from_this();
  const bool captured = desk_.Capture() == Handle();
  desk_.Hover(Handle());
  if (IsButtonDown(message)) {
    desk_.ClickedIn();
    const auto top = desk_.Window(desk_.TopOf(Handle()));
    const bool activates = top != nullptr && top->Kind() != WindowKind::Popup;
    if (activates && (top->ExStyle() & WS_EX_NOACTIVATE) == 0) desk_.ActivateTop(top->Handle());
  }
  if (!Exists()) return;
  const CPoint at = screen - CSize(CPoint(ClientOrigin()));
  if (!captured && CRect(ClientRect()).PtInRect(at) == 0) return;
  if (!captured)
    DeliverMessage(Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Handle()),
                   MAKELPARAM(HTCLIENT, static_cast<LONG_PTR>(message)));
  if (Exists()) desk_.Deliver(desk_.MessageNow(Handle(), message, desk_.HeldKeys(), MAKELPARAM(at.x, at.y)));
}

bool QtWindow::TakeWheel(QWheelEvent& event) {
  event.accept();
  const CPoint screen = FromQt(event.globalPosition().toPoint());
  desk_.KeepMouse(screen, event.buttons(), event.modifiers());
  const HWND focus = desk_.Focus();
  const auto target = desk_.Window(focus == nullptr || !desk_.StillThere(focus) ? Handle() : focus);
  if (target == nullptr || target->Blocked()) return true;
  const QPoint turned = event.angleDelta();
  const UINT message = turned.y() != 0 ? WM_MOUSEWHEEL : WM_MOUSEHWHEEL;
  // Qt turns to the left with positive numbers, the messages to the right.
  const int delta = turned.y() != 0 ? turned.y() : -turned.x();
  desk_.Deliver(desk_.MessageNow(target->Handle(), message,
                                 MAKEWPARAM(static_cast<LONG_PTR>(desk_.HeldKeys()), delta),
                                 MAKELPARAM(screen.x, screen.y)));
  return true;
}

}  // namespace lorv
