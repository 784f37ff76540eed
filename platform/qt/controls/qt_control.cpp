#include "platform/qt/controls/qt_control.h"

#include <QPaintEvent>
#include <QPainter>
#include <utility>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_text_cache.h"

// What all controls made of widgets share: their margins, and that the widget paints itself unless the class
// has drawn. Which of the two holds is known only after WM_PAINT was handled, hence the round by `natively_`
// and `asked_`.

namespace lorv {

void QtControl::StartControl(QWidget* widget, QWidget* pane) {
  Start(widget, pane);
  widget->setFont(QtTextCache::Here().Face(Font()).font);
}

bool QtControl::Framed() const {
  return (Look() & WS_BORDER) != 0 || (ExStyle() & WS_EX_CLIENTEDGE) != 0;
}

QtWindow::Edges QtControl::Margins() const {
  if (Pane() == Widget()) {
    // Without an inner pane the frame is ours to draw; with one the widget has laid it out itself.
    const int line = Framed() ? 1 : 0;
    return {line, line, line, line};
  }
  const QRect pane = Pane()->geometry();
  return {pane.left(), pane.top(), Widget()->width() - pane.left() - pane.width(),
          Widget()->height() - pane.top() - pane.height()};
}

void QtControl::ShowFont(const QFont& font) {
  Widget()->setFont(font);
}

LRESULT QtControl::Default(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_PAINT) {
    // The default came through: the class left the painting to the widget.
    natively_ = true;
    return 0;
  }
  return QtWindow::Default(message, w, l);
}

void QtControl::AskToPaint() {
  const bool before = std::exchange(natively_, false);
  QtWindow::AskToPaint();
  // A widget that painted itself before and does so again has shown its new state already.
  if (!Exists() || (natively_ && before)) return;
  asked_ = true;
  Pane()->update();
}

// The widget set paints on its own account as well. The class is asked afterwards, not in the middle of that,
// and what it then draws is shown by the next round.
bool QtControl::TakePaint(QObject* receiver, QPaintEvent& event) {
  // Nobody to ask: a control without an object is painted by its widget.
  if (receiver != Pane() || MappedWindow(Handle()) == nullptr) return false;
  if (!std::exchange(asked_, false)) WantPaint();
  if (natively_) return false;
  QPainter painter(Pane());
  const Edges edges = Margins();
  const QPoint at = Pane() == Widget() ? QPoint(edges.left, edges.top) : QPoint(0, 0);
  ShowSurface(painter, at, event);
  return true;
}

}  // namespace lorv
