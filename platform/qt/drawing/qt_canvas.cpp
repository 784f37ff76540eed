#include "platform/qt/drawing/qt_canvas.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"

namespace lorv {
namespace {

int Between(int first, int last, int at, int length) {
  return length <= 1 ? first : first + (last - first) * at / (length - 1);
}

QColor Mixed(COLORREF first, COLORREF last, int at, int length) {
  return QColor(Between(GetRValue(first), GetRValue(last), at, length),
                Between(GetGValue(first), GetGValue(last), at, length),
                Between(GetBValue(first), GetBValue(last), at, length));
}

// Whether the step of a line is drawn in that style.
bool Inked(int style, int step) {
  constexpr int kDash = 4;
  constexpr int kPeriod = 6;
  if (style == PS_DOT) return step % 2 == 0;
  return style != PS_DASH || step % kPeriod < kDash;
}

void DrawSteps(QPainter& painter, POINT from, POINT to, const Stroke& stroke) {
  const int across = to.x - from.x;
  const int down = to.y - from.y;
  const int steps = std::max(std::abs(across), std::abs(down));
  const QColor colour = ToQt(stroke.colour);
  for (int i = 0; i < steps; ++i)
    if (Inked(stroke.style, i))
      painter.fillRect(from.x + across * i / steps, from.y + down * i / steps, stroke.width, stroke.width,
                       colour);
}

}  // namespace

QtSurface::QtSurface(SIZE size, std::function<void()> changed)
    : size_(std::max(size.cx, 0), std::max(size.cy, 0)), changed_(std::move(changed)) {}

void QtSurface::Resize(SIZE size, double ratio) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const CSize fresh(std::max(size.cx, 0), std::max(size.cy, 0));
  if (fresh == size_ && ratio == ratio_) return;
  size_ = fresh;
  ratio_ = ratio;
  if (image_.isNull()) return;
  const QImage before = std::exchange(image_, QImage());
  Provide();
  if (image_.isNull()) return;
  QPainter painter(&image_);
  painter.drawImage(QPoint(0, 0), before);
}

void QtSurface::Provide() {
  if (!image_.isNull() || size_.cx == 0 || size_.cy == 0) return;
  const auto device = [this](int length) { return static_cast<int>(std::ceil(length * ratio_)); };
  image_ = QImage(device(size_.cx), device(size_.cy), QImage::Format_RGB32);
  if (image_.isNull()) return;
  image_.setDevicePixelRatio(ratio_);
  image_.fill(Qt::white);
}

SIZE QtSurface::Size() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return size_;
}

void QtSurface::Draw(const CRect& clip, const CRect& bounds, const std::function<void(QPainter&)>& draw) {
  bool first = false;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    const CRect part = CRect(CPoint(0, 0), static_cast<SIZE>(size_)) & clip & bounds;
    if (part.IsRectEmpty() != 0) return;
    Provide();
    if (image_.isNull()) return;
    QPainter painter(&image_);
    painter.setClipRect(ToQt(part));
    draw(painter);
    first = changed_part_.IsRectEmpty() != 0;
    changed_part_ |= part;
  }
  if (first && changed_) changed_();
}

void QtSurface::Show(QPainter& screen, QPoint at, const QRect& part) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  screen.setClipRect(part & QRect(at, QSize(size_.cx, size_.cy)), Qt::IntersectClip);
  if (image_.isNull()) {
    screen.fillRect(part, Qt::white);
  } else {
    screen.drawImage(at, image_);
  }
}

QImage QtSurface::Part(const CRect& rect) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  QImage part(std::max(rect.Width(), 0), std::max(rect.Height(), 0), QImage::Format_ARGB32);
  part.fill(Qt::transparent);
  if (part.isNull()) return part;
  QPainter painter(&part);
  painter.setClipRect(QRect(-rect.left, -rect.top, size_.cx, size_.cy));
  if (image_.isNull()) {
    painter.fillRect(part.rect(), Qt::white);
  } else {
    painter.drawImage(QPoint(-rect.left, -rect.top), image_);
  }
  return part;
}

CRect QtSurface::TakeChanged() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(changed_part_, CRect());
}

QtCanvas::QtCanvas(std::shared_ptr<QtSurface> surface, const CRect& limit)
    : surface_(std::move(surface)), limit_(limit), clip_(limit), font_(FontOf(DialogFace())) {}

void QtCanvas::Draw(const CRect& bounds, const std::function<void(QPainter&)>& draw) {
  surface_->Draw(clip_, bounds, draw);
}

void QtCanvas::Fill(const RECT& rect, COLORREF colour) {
  Draw(rect, [&](QPainter& painter) { painter.fillRect(ToQt(rect), ToQt(colour)); });
}

void QtCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  const CRect box(rect);
  const int length = downwards ? box.Height() : box.Width();
  Draw(box, [&](QPainter& painter) {
    for (int i = 0; i < length; ++i)
      painter.fillRect(downwards ? QRect(box.left, box.top + i, box.Width(), 1)
                                 : QRect(box.left + i, box.top, 1, box.Height()),
                       Mixed(first, last, i, length));
  });
}

void QtCanvas::Frame(const RECT& rect, COLORREF colour, int width) {
  Draw(rect, [&](QPainter& painter) {
    const QRect box = ToQt(rect);
    painter.setClipRegion(QRegion(box) - box.adjusted(width, width, -width, -width), Qt::IntersectClip);
    painter.fillRect(box, ToQt(colour));
  });
}

void QtCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  if (stroke.style == PS_NULL) return;
  CRect bounds(from, to);
  bounds.NormalizeRect();
  bounds.right = std::max(bounds.right, bounds.left) + stroke.width;
  bounds.bottom = std::max(bounds.bottom, bounds.top) + stroke.width;
  Draw(bounds, [&](QPainter& painter) { DrawSteps(painter, from, to, stroke); });
}

void QtCanvas::Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) {
  if (corners.size() < 2) return;
  QPolygon polygon;
  for (const POINT& corner : corners) polygon << ToQt(corner);
  if (inside != nullptr) {
    Draw(FromQt(polygon.boundingRect()), [&](QPainter& painter) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(ToQt(*inside));
      painter.drawPolygon(polygon);
    });
  }
  if (edge == nullptr) return;
  for (std::size_t i = 0; i < corners.size(); ++i) Line(corners[i], corners[(i + 1) % corners.size()], *edge);
}

void QtCanvas::Invert(const RECT& rect) {
  Draw(rect, [&](QPainter& painter) {
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    painter.fillRect(ToQt(rect), Qt::white);
  });
}

void QtCanvas::SetFont(const LOGFONT& font) {
  font_ = FontOf(font);
}

TEXTMETRIC QtCanvas::Metrics() const {
  const QFontMetrics measured(font_);
  TEXTMETRIC metrics = {};
  metrics.tmHeight = measured.height();
  metrics.tmAscent = measured.ascent();
  metrics.tmDescent = measured.height() - measured.ascent();
  metrics.tmInternalLeading = std::max(measured.height() - font_.pixelSize(), 0);
  metrics.tmExternalLeading = std::max(measured.leading(), 0);
  metrics.tmAveCharWidth = measured.averageCharWidth();
  metrics.tmMaxCharWidth = measured.maxWidth();
  metrics.tmWeight = font_.bold() ? FW_BOLD : FW_NORMAL;
  metrics.tmItalic = font_.italic() ? 1 : 0;
  return metrics;
}

SIZE QtCanvas::Extent(TextView text) const {
  const QFontMetrics measured(font_);
  return {measured.horizontalAdvance(ToQt(text)), measured.height()};
}

void QtCanvas::Text(POINT at, TextView text, COLORREF colour) {
  const QFontMetrics measured(font_);
  const QString line = ToQt(text);
  // Letters may hang over their advance at both ends.
  const int over = measured.height();
  const CRect bounds(at.x - over, at.y, at.x + measured.horizontalAdvance(line) + over,
                     at.y + measured.height());
  Draw(bounds, [&](QPainter& painter) {
    painter.setFont(font_);
    painter.setPen(ToQt(colour));
    painter.drawText(QPoint(at.x, at.y + measured.ascent()), line);
  });
}

void QtCanvas::SetClip(const RECT* clip) {
  clip_ = clip == nullptr ? limit_ : limit_ & *clip;
}

void QtCanvas::Copy(const RECT& to, Canvas& from, POINT from_at) {
  const auto* const source = dynamic_cast<QtCanvas*>(&from);
  const CRect target(to);
  if (source == nullptr || target.IsRectEmpty() != 0) return;
  // What lies outside the source is left as it is in the target.
  const QImage part = source->surface_->Part(CRect(CPoint(from_at), target.Size()));
  Draw(target, [&](QPainter& painter) { painter.drawImage(ToQt(target.TopLeft()), part); });
}

void QtCanvas::Image(const PixelImage& image, const RECT& to) {
  if (image.pixels == nullptr || image.width <= 0 || image.height <= 0) return;
  const QImage shown(reinterpret_cast<const uchar*>(image.pixels), image.width, image.height,
                     static_cast<qsizetype>(image.width) * 4, QImage::Format_ARGB32);
  Draw(to, [&](QPainter& painter) { painter.drawImage(ToQt(to), shown); });
}

std::vector<DWORD> QtCanvas::Pixels(const RECT& rect) const {
  return PixelsOf(surface_->Part(rect));
}

std::vector<DWORD> PixelsOf(const QImage& image) {
  const auto width = static_cast<std::size_t>(image.width());
  std::vector<DWORD> pixels(width * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height() && width != 0; ++y)
    std::memcpy(&pixels[static_cast<std::size_t>(y) * width], image.constScanLine(y), width * sizeof(DWORD));
  return pixels;
}

}  // namespace lorv
