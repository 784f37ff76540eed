#include <QPaintEvent>
#include <QRegion>
#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_window.h"

// How a window is painted, and what it looks like.

namespace lorv {

void QtWindow::PaintWanted() {
  desk_.WantPaint();
}

// What the widget set shows itself is asked of it.
void QtWindow::Invalidated() {
  if (!PaintsSelf()) pane_->update();
}

void QtWindow::RedrawChanged(bool on) {
  if (!PaintsSelf()) pane_->setUpdatesEnabled(on);
}

std::unique_ptr<Canvas> QtWindow::PaintCanvas(RECT& dirty) {
  const Region limit = TakeDirty();
  dirty = limit.Bounds();
  surface_->Mark(limit);
  auto canvas = std::make_unique<QtCanvas>(surface_, limit);
  if (Exists() && !limit.IsEmpty()) EraseGround(*canvas, limit.Bounds());
  return canvas;
}

std::unique_ptr<Canvas> QtWindow::ClientCanvas() {
  // Large enough for every size that the window may come to while the canvas lives.
  constexpr int kLimit = 1 << 20;
  return std::make_unique<QtCanvas>(surface_, Region(CRect(0, 0, Exists() ? kLimit : 0, kLimit)));
}

void QtWindow::ShowChanges() {
  const Region changed = surface_->TakeChanged();
  if (!Exists() || changed.IsEmpty()) return;
  // The surface counts from the client area, the widget from its corner.
  const QPoint at = pane_ == widget_ ? QPoint(Margins().left, Margins().top) : QPoint(0, 0);
  QRegion parts;
  for (const CRect& part : changed.Rects()) parts += ToQt(part).translated(at);
  pane_->update(parts);
}

void QtWindow::ShowSurface(QPainter& painter, QPoint at, const QPaintEvent& event) {
  for (const QRect& part : event.region()) surface_->Show(painter, at, part);
}

void QtWindow::ScreenChanged() {
  if (!Exists()) return;
  const auto keep = shared_from_this();
  const double before = surface_->Ratio();
  Measure();
  // The picture was blown up or shrunk to the new scale: it is drawn anew.
  if (surface_->Ratio() != before) Invalidate(nullptr);
  for (const HWND child : Children())
    if (const auto window = desk_.Window(child)) window->ScreenChanged();
  if (Parent() == nullptr) ReportDpi(widget_->logicalDpiY());
}

std::vector<DWORD> QtWindow::Picture(SIZE& size) {
  size = {0, 0};
  if (!Seen()) return {};
  const auto keep = shared_from_this();
  Update();
  if (!Exists()) return {};
  const QImage grabbed = widget_->grab().toImage().convertToFormat(QImage::Format_RGB32);
  size = {grabbed.width(), grabbed.height()};
  return PixelsOf(grabbed);
}

}  // namespace lorv
