#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

#include "bench/editor_keys.h"
#include "platform/qt/desktop/qt_desktop.h"

namespace lorv_bench {
namespace {

// Counts what line edits are told while it lives.
class EditorEvents : public QObject {
 public:
  EditorEvents() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (qobject_cast<QLineEdit*>(receiver) == nullptr) return false;
    painted += event->type() == QEvent::Paint ? 1 : 0;
    got_focus += event->type() == QEvent::FocusIn ? 1 : 0;
    lost_focus += event->type() == QEvent::FocusOut ? 1 : 0;
    return false;
  }

  int painted = 0;
  int got_focus = 0;
  int lost_focus = 0;
};

}  // namespace

void Press(Key key, int digit) {
  constexpr Qt::Key kKeys[] = {Qt::Key_F2, Qt::Key_Return, Qt::Key_0};
  const QString text = key == Key::Digit ? QString::number(digit) : QString();
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, kKeys[static_cast<int>(key)] + digit, Qt::NoModifier, text);
    if (QWidget* const focus = QApplication::focusWidget()) QApplication::sendEvent(focus, &event);
  }
}

void BringForward(HWND window) {
  lorv::QtWidgetOf(window)->activateWindow();
}

bool EditorWorks(GridPeer& side, int row, int column) {
  side.Activate();
  const EditorEvents events;
  side.OpenEditor(row, column);
  const auto* const editor = qobject_cast<const QLineEdit*>(QApplication::focusWidget());
  const bool open = editor != nullptr && editor->isVisible() && editor->hasFocus() &&
                    editor->isActiveWindow() && editor->selectedText() == editor->text();
  const bool seen = events.painted > 0 && events.got_focus == 1 && events.lost_focus == 0;
  side.TypeDigit(7);
  side.CloseEditor();
  return open && seen && events.got_focus == 1 && events.lost_focus == 1 &&
         qobject_cast<const QLineEdit*>(QApplication::focusWidget()) == nullptr &&
         side.TextAt(row, column) == u"7";
}

}  // namespace lorv_bench
