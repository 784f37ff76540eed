#include "platform/qt/window/qt_window.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QPaintEvent>
#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_text_cache.h"

// Place and state of a window. Its painting is in qt_window_paint.cpp, its life in qt_window_life.cpp, its
// events in qt_window_input.cpp.

namespace lorv {

void QtWindow::StyleChanged(DWORD before) {
  const WidgetWork work(*this);
  ShowStyle(before);
}

void QtWindow::VisibleChanged(int how) {
  const bool activates = how != SW_SHOWNA && how != SW_SHOWNOACTIVATE && how != SW_SHOWMINNOACTIVE;
  // Before it is shown, as Qt asks for it then only.
  widget_->setAttribute(Qt::WA_ShowWithoutActivating, !activates || Kind() == WindowKind::Popup);
  widget_->setVisible(how != SW_HIDE);
  // A window of fixed size has limits that a maximised one would break.
  if (how == SW_SHOWMAXIMIZED && !IsFixed()) widget_->showMaximized();
  if (how == SW_SHOWMINIMIZED || how == SW_MINIMIZE) widget_->showMinimized();
  if (how == SW_RESTORE || how == SW_SHOWNORMAL) widget_->setWindowState(Qt::WindowNoState);
}

// A disabled top-level window keeps its looks: only its input is refused.
void QtWindow::EnabledChanged() {
  if (Parent() != nullptr) widget_->setEnabled((Look() & WS_DISABLED) == 0);
}

void QtWindow::TextChanged() {
  const WidgetWork work(*this);
  if (Parent() == nullptr) widget_->setWindowTitle(ToQt(Text().View()));
  ShowText();
}

void QtWindow::FontChanged() {
  const WidgetWork work(*this);
  ShowFont(QtTextCache::Here().Face(Font()).font);
}

void QtWindow::ShowFocus() {
  widget_->setFocus(Qt::OtherFocusReason);
}

void QtWindow::CompositionCaretChanged() {
  QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle | Qt::ImEnabled);
}

void QtWindow::Measure() {
  if (widget_ == nullptr) return;
  const Edges edges = Margins();
  surface_->Resize(
      {widget_->width() - edges.left - edges.right, widget_->height() - edges.top - edges.bottom},
      widget_->devicePixelRatioF());
}

// Where the window stands, as WM_MOVE counts it.
CPoint QtWindow::PlaceOf() const {
  const auto parent = std::static_pointer_cast<QtWindow>(ParentModel());
  if (parent == nullptr) return ClientOrigin();
  const Edges edges = parent->Margins();
  return FromQt(widget_->pos()) - CSize(edges.left, edges.top);
}

void QtWindow::PlaceChanged() {
  if (!Exists() || widget_ == nullptr) return;
  Measure();
  ReportPlace(PlaceOf());
}

void QtWindow::PutAt(const RECT& place) {
  QRect rect = ToQt(place);
  if (const auto parent = std::static_pointer_cast<QtWindow>(ParentModel())) {
    rect.translate(parent->Margins().left, parent->Margins().top);
  } else {
    const QRect frame = widget_->frameGeometry();
    const QRect inner = widget_->geometry();
    // Qt places the inside of a window, the messages its frame.
    rect.adjust(inner.left() - frame.left(), inner.top() - frame.top(), inner.right() - frame.right(),
                inner.bottom() - frame.bottom());
  }
  // The limits of the old size would refuse the new one.
  if (IsFixed()) {
    widget_->setMinimumSize(0, 0);
    widget_->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  }
  widget_->setGeometry(QRect(rect.topLeft(), rect.size().expandedTo(QSize(0, 0))));
  HoldSize();
}

// The window system gets a fixed size by its limits.
void QtWindow::HoldSize() {
  if (widget_ == nullptr || Parent() != nullptr) return;
  const QSize all(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  widget_->setMinimumSize(IsFixed() ? widget_->size() : QSize(0, 0));
  widget_->setMaximumSize(IsFixed() ? widget_->size() : all);
}

void QtWindow::Place(const RECT& place) {
  if (!Exists()) return;
  const auto keep = shared_from_this();
  // The messages come in one order whether the widget reports it at once or later.
  {
    const WidgetWork work(*this);
    PutAt(place);
  }
  // What the widget set reported of another screen was kept back with the rest.
  const bool other = widget_->logicalDpiY() != Dpi() || widget_->devicePixelRatioF() != surface_->Ratio();
  if (Parent() == nullptr && other) ScreenChanged();
  PlaceChanged();
}

void QtWindow::Raise() {
  if (!Exists()) return;
  widget_->raise();
  if (Parent() == nullptr) desk_.RaiseTop(Handle());
}

RECT QtWindow::WindowRect() const {
  if (!Exists()) return {0, 0, 0, 0};
  if (Parent() == nullptr) return FromQt(widget_->frameGeometry());
  return CRect(FromQt(widget_->mapToGlobal(QPoint(0, 0))), CSize(widget_->width(), widget_->height()));
}

RECT QtWindow::ClientRect() const {
  return Exists() ? CRect(CPoint(0, 0), surface_->Size()) : CRect();
}

POINT QtWindow::ClientOrigin() const {
  if (!Exists()) return {0, 0};
  const Edges edges = Margins();
  return FromQt(widget_->mapToGlobal(QPoint(edges.left, edges.top)));
}

SIZE QtWindow::FrameSize(SIZE client) const {
  if (!Exists()) return client;
  const Edges edges = Margins();
  const QSize frame = Parent() == nullptr ? widget_->frameGeometry().size() - widget_->size() : QSize(0, 0);
  return {client.cx + edges.left + edges.right + frame.width(),
          client.cy + edges.top + edges.bottom + frame.height()};
}

}  // namespace lorv
