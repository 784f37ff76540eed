#include "platform/qt/drawing/qt_canvas.h"

#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>

#include "framework/drawing/line_runs.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "platform/qt/drawing/qt_text_cache.h"

// A canvas over Qt's painter. It draws on a ground (a window's surface, a picture, a page) that keeps one
// painter open and what is set in it; the clip, the pen and the font are set only when they differ from what
// that painter has. Sizes are in counted pixels, fills in whole ones of the picture.

namespace lorv {

// The painter of a canvas' ground for the time of one call, set to the canvas' clip.
class QtDrawing {
 public:
  // `within` narrows the clip for this call.
  QtDrawing(const QtCanvas& canvas, const CRect& bounds, const RECT* within = nullptr)
      : ground_(*canvas.ground_), part_(bounds & canvas.clip_) {
    if (within != nullptr) part_ &= *within;
    // What lies outside the clip takes no painter and no lock.
    if (part_.IsRectEmpty() != 0) return;
    painter_ = ground_.Open(part_);
    if (painter_ != nullptr) UseClip(canvas, within);
  }
  QtDrawing(const QtDrawing&) = delete;
  QtDrawing& operator=(const QtDrawing&) = delete;
  ~QtDrawing() {
    if (painter_ != nullptr) ground_.Close(part_);
  }

  explicit operator bool() const { return painter_ != nullptr; }
  QPainter* operator->() const { return painter_; }
  const CRect& Part() const { return part_; }

  // In whole pixels of the picture, whatever one counted pixel is: so edges are never between two of them.
  void Fill(const CRect& rect, const QColor& colour) const {
    const double ratio = ground_.Ratio();
    if (ratio == 1) return painter_->fillRect(ToQt(rect), colour);
    const auto snapped = [ratio](LONG at) { return std::round(at * ratio) / ratio; };
    // What is one pixel thin stays as thin everywhere.
    const auto length = [&](LONG from, LONG to) {
      return to - from == 1 ? std::max(std::floor(ratio), 1.0) / ratio : snapped(to) - snapped(from);
    };
    painter_->fillRect(QRectF(snapped(rect.left), snapped(rect.top), length(rect.left, rect.right),
                              length(rect.top, rect.bottom)),
                       colour);
  }
  void UseFace(const QtFace& face) const {
    if (ground_.setting_.face == face.number) return;
    painter_->setFont(face.font);
    ground_.setting_.face = face.number;
  }
  void UseInk(COLORREF colour) const {
    QtGround::Setting& setting = ground_.setting_;
    if (setting.inked && setting.ink == colour) return;
    painter_->setPen(ToQt(colour));
    setting.inked = true;
    setting.ink = colour;
  }
  void ForgetInk() const { ground_.setting_.inked = false; }

 private:
  void UseClip(const QtCanvas& canvas, const RECT* within) const {
    QtGround::Setting& setting = ground_.setting_;
    if (within == nullptr && setting.canvas == canvas.number_ && setting.clip == canvas.clip_number_) return;
    // The faces are numbered by thread, and a canvas is drawn on by one of them.
    if (setting.canvas != canvas.number_) setting.face = 0;
    const CRect clip = within == nullptr ? canvas.clip_ : canvas.clip_ & *within;
    if (canvas.clip_parts_.IsEmpty()) {
      painter_->setClipRect(ToQt(clip));
    } else {
      QRegion parts;
      for (const CRect& part : canvas.clip_parts_.Rects()) parts += ToQt(part & clip);
      painter_->setClipRegion(parts);
    }
    setting.canvas = canvas.number_;
    // A narrowed clip is for one call; number 0 is no canvas' clip, so the next call sets its own.
    setting.clip = within == nullptr ? canvas.clip_number_ : 0;
  }

  QtGround& ground_;
  CRect part_;
  QPainter* painter_ = nullptr;
};

namespace {

// Shaping a text for keeping takes thrice as long as drawing it: a painting does so for some only.
constexpr int kShapingsForOne = 128;

std::uint64_t NextNumber() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

int Between(int first, int last, int at, int length) {
  return length <= 1 ? first : first + (last - first) * at / (length - 1);
}

QColor Mixed(COLORREF first, COLORREF last, int at, int length) {
  return QColor(Between(GetRValue(first), GetRValue(last), at, length),
                Between(GetGValue(first), GetGValue(last), at, length),
                Between(GetBValue(first), GetBValue(last), at, length));
}

// Shaped ahead, so that drawing takes the glyphs as they are.
QStaticText Shaped(const QString& text, const QFont& font) {
  QStaticText shaped(text);
  shaped.setTextFormat(Qt::PlainText);
  shaped.setPerformanceHint(QStaticText::AggressiveCaching);
  shaped.prepare(QTransform(), font);
  return shaped;
}

}  // namespace

QtCanvas::QtCanvas(std::shared_ptr<QtGround> ground, Region limit)
    : ground_(std::move(ground)),
      number_(NextNumber()),
      limit_(std::move(limit)),
      description_(DialogFace()),
      shapings_left_(kShapingsForOne) {
  SetClip(nullptr);
}

QtCanvas::~QtCanvas() {
  ground_->Leave(number_);
}

void QtCanvas::SetClip(const RECT* clip) {
  clip_parts_ = limit_;
  if (clip != nullptr) clip_parts_.Keep(*clip);
  clip_ = clip_parts_.Bounds();
  // A rectangle alone is cheaper for the painter than a region of one.
  if (clip_parts_.Rects().size() <= 1) clip_parts_.Clear();
  ++clip_number_;
}

bool QtCanvas::Shows(const RECT& rect) const {
  // The surface's size lies behind a lock, which costs more than all else here: it is asked for the few
  // rectangles that the clip lets through.
  const auto shown = [this](const CRect& part) {
    return part.IsRectEmpty() == 0 && (clip_parts_.IsEmpty() || clip_parts_.Touches(part));
  };
  const CRect within = clip_ & rect;
  return shown(within) && shown(within & CRect(CPoint(0, 0), Size()));
}

void QtCanvas::Fill(const RECT& rect, COLORREF colour) {
  if (const QtDrawing drawing(*this, rect); drawing) drawing.Fill(rect, ToQt(colour));
}

void QtCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  const CRect box(rect);
  const QtDrawing drawing(*this, box);
  if (!drawing) return;
  const CRect part = drawing.Part();
  const int length = downwards ? box.Height() : box.Width();
  const int start = downwards ? box.top : box.left;
  for (int at = downwards ? part.top : part.left; at < (downwards ? part.bottom : part.right); ++at)
    drawing.Fill(downwards ? CRect(box.left, at, box.right, at + 1) : CRect(at, box.top, at + 1, box.bottom),
                 Mixed(first, last, at - start, length));
}

void QtCanvas::Frame(const RECT& rect, COLORREF colour, int width) {
  const CRect box(rect);
  if (width <= 0 || box.IsRectEmpty() != 0) return;
  const QtDrawing drawing(*this, box);
  if (!drawing) return;
  const QColor ink = ToQt(colour);
  if (width >= (box.Width() + 1) / 2 || width >= (box.Height() + 1) / 2) return drawing.Fill(box, ink);
  drawing.Fill(CRect(box.left, box.top, box.right, box.top + width), ink);
  drawing.Fill(CRect(box.left, box.bottom - width, box.right, box.bottom), ink);
  drawing.Fill(CRect(box.left, box.top + width, box.left + width, box.bottom - width), ink);
  drawing.Fill(CRect(box.right - width, box.top + width, box.right, box.bottom - width), ink);
}

void QtCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  const auto runs = LineRuns(from, to, stroke, clip_ & CRect(CPoint(0, 0), Size()));
  if (runs.empty()) return;
  CRect bounds;
  for (const CRect& run : runs) bounds |= run;
  const QtDrawing drawing(*this, bounds);
  if (!drawing) return;
  const QColor ink = ToQt(stroke.colour);
  for (const CRect& run : runs) drawing.Fill(run, ink);
}

void QtCanvas::Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) {
  if (corners.size() < 2) return;
  QPolygon polygon;
  for (const POINT& corner : corners) polygon << ToQt(corner);
  if (const QtDrawing drawing(*this, FromQt(polygon.boundingRect())); drawing && inside != nullptr) {
    // The edge is drawn below as lines are drawn, so that both have the same pixels on every system.
    drawing->setPen(Qt::NoPen);
    drawing->setBrush(ToQt(*inside));
    drawing->drawPolygon(polygon);
    drawing.ForgetInk();
  }
  if (edge == nullptr) return;
  for (std::size_t i = 0; i < corners.size(); ++i) Line(corners[i], corners[(i + 1) % corners.size()], *edge);
}

void QtCanvas::Invert(const RECT& rect) {
  const QtDrawing drawing(*this, rect);
  if (!drawing) return;
  // White turns every bit; a second time brings the ground back.
  drawing->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
  drawing.Fill(rect, Qt::white);
  drawing->setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QtCanvas::SetFont(const LOGFONT& font) {
  // By bytes, which may take equal fonts for different ones: that costs a search and no more.
  if (std::memcmp(&font, &description_, sizeof(font)) == 0) return;
  description_ = font;
  face_ = nullptr;
}

const QtFace& QtCanvas::Face(QtTextCache& cache) const {
  if (face_ == nullptr || cache_ != &cache || cache_age_ != cache.Age()) {
    face_ = &cache.Face(description_);
    cache_ = &cache;
    cache_age_ = cache.Age();
  }
  return *face_;
}

TEXTMETRIC QtCanvas::Metrics() const {
  return Face(QtTextCache::Here()).metrics;
}

SIZE QtCanvas::Extent(TextView text) const {
  QtTextCache& cache = QtTextCache::Here();
  const QtFace& face = Face(cache);
  return {cache.Advance(face, text), face.metrics.tmHeight};
}

void QtCanvas::Text(POINT at, TextView text, COLORREF colour) {
  PutText(at, text, colour, nullptr);
}

void QtCanvas::ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) {
  PutText(at, text, colour, &within);
}

void QtCanvas::PutText(POINT at, TextView text, COLORREF colour, const RECT* within) {
  QtTextCache& cache = QtTextCache::Here();
  const QtFace& face = Face(cache);
  const int advance = cache.Advance(face, text);
  // Letters may hang over their advance at both ends.
  const int over = face.metrics.tmHeight;
  const CRect bounds(at.x - over, at.y, at.x + advance + over, at.y + face.metrics.tmHeight);
  const QtDrawing drawing(*this, bounds, within);
  if (!drawing) return;
  drawing.UseFace(face);
  drawing.UseInk(colour);
  QtRun* const run = cache.Run(face, text, advance);
  // Only what is drawn a second time is shaped for keeping: a page that is scrolled through is drawn once.
  if (run != nullptr && !run->shaped && run->drawn && shapings_left_ > 0) {
    --shapings_left_;
    run->shaped = Shaped(ToQt(text), face.font);
  }
  if (run != nullptr && run->shaped) return drawing->drawStaticText(ToQt(at), *run->shaped);
  if (run != nullptr) run->drawn = true;
  drawing->drawText(QPoint(at.x, at.y + face.metrics.tmAscent), ToQt(text));
}

void QtCanvas::Copy(const RECT& to, Canvas& from, POINT from_at) {
  const auto* const source = dynamic_cast<QtCanvas*>(&from);
  if (source == nullptr) return;
  const CSize by = CRect(to).TopLeft() - CPoint(from_at);
  // What lies outside the source is left as it is in the target.
  const CRect target = CRect(to) & (CRect(CPoint(0, 0), source->Size()) + by) & clip_;
  if (target.IsRectEmpty() != 0) return;
  // A copy, and before the target's painter is opened: source and target may be one surface, and its lock is
  // no recursive one.
  const QImage part = source->ground_->Part(target - by);
  if (part.isNull()) return;
  if (const QtDrawing drawing(*this, target); drawing) drawing->drawImage(ToQt(target.TopLeft()), part);
}

void QtCanvas::Image(const PixelImage& image, const RECT& to) {
  if (image.pixels == nullptr || image.width <= 0 || image.height <= 0) return;
  // The picture is lent to the call: the pixels are the caller's and are not copied.
  const QImage shown(reinterpret_cast<const uchar*>(image.pixels), image.width, image.height,
                     static_cast<qsizetype>(image.width) * 4, QImage::Format_ARGB32);
  if (const QtDrawing drawing(*this, to); drawing) drawing->drawImage(ToQt(to), shown);
}

std::vector<DWORD> QtCanvas::Pixels(const RECT& rect) const {
  const CRect wanted(rect);
  if (wanted.IsRectEmpty() != 0) return {};
  QImage pixels(wanted.Width(), wanted.Height(), QImage::Format_ARGB32);
  pixels.fill(Qt::transparent);
  const CRect there = wanted & CRect(CPoint(0, 0), Size());
  const QImage part = there.IsRectEmpty() != 0 ? QImage() : ground_->Part(there);
  if (!part.isNull()) {
    QPainter painter(&pixels);
    painter.drawImage(ToQt(there.TopLeft() - static_cast<SIZE>(CSize(wanted.TopLeft()))), part);
  }
  return PixelsOf(pixels);
}

std::vector<DWORD> PixelsOf(const QImage& image) {
  const auto width = static_cast<std::size_t>(image.width());
  std::vector<DWORD> pixels(width * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height() && width != 0; ++y)
    std::memcpy(&pixels[static_cast<std::size_t>(y) * width], image.constScanLine(y), width * sizeof(DWORD));
  return pixels;
}

}  // namespace lorv
