#include "platform/qt/drawing/qt_canvas.h"

#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>

#include "framework/drawing/line_runs.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_drawing.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "platform/qt/drawing/qt_glyph_texts.h"
#include "platform/qt/drawing/qt_text_cache.h"

// A canvas over Qt's painter. It draws on a ground (a window's surface, a picture, a page) that keeps one
// painter open and what is set in it. Most of a page of cells passes the painter by: pixels of one colour are
// set as they are, and numbers are put together from glyphs. Sizes are in counted pixels, fills in whole ones
// of the picture.

namespace lorv {

namespace {

// Shaping a text for keeping takes thrice as long as drawing it: a painting does so for some only.
constexpr int kShapingsForOne = 128;

std::uint64_t NextNumber() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

BYTE Between(BYTE first, BYTE last, int at, int length) {
  return static_cast<BYTE>(length <= 1 ? first : first + (last - first) * at / (length - 1));
}

COLORREF Mixed(COLORREF first, COLORREF last, int at, int length) {
  return RGB(Between(GetRValue(first), GetRValue(last), at, length),
             Between(GetGValue(first), GetGValue(last), at, length),
             Between(GetBValue(first), GetBValue(last), at, length));
}

// Whether the glyphs of a text, shaped for keeping, are drawn as the font draws the text. Lines through it
// and below it, and what runs from right to left, are the font's affair.
bool CanBeKept(const QFont& font, TextView text) {
  return !font.underline() && !font.strikeOut() && !QGuiApplication::isRightToLeft() && AreSetSingly(text);
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

bool QtCanvas::Holds(const CRect& part) const {
  const std::vector<CRect>& parts = clip_parts_.Rects();
  return parts.empty() ||
         std::any_of(parts.begin(), parts.end(), [&](const CRect& known) { return (known & part) == part; });
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

void QtCanvas::FillAll(std::span<const QtFill> fills) {
  const auto within =
      clip_parts_.IsEmpty() ? std::span<const CRect>(&clip_, 1) : std::span<const CRect>(clip_parts_.Rects());
  if (ground_->SetPixels(fills, within)) return;
  CRect bounds;
  for (const QtFill& fill : fills) bounds |= fill.rect;
  const QtDrawing drawing(*this, bounds);
  if (!drawing) return;
  for (const QtFill& fill : fills) drawing.Fill(fill.rect, ToQt(fill.colour));
}

void QtCanvas::Fill(const RECT& rect, COLORREF colour) {
  const QtFill fill{rect, colour};
  // What lies outside the clip takes no lock.
  if ((clip_ & fill.rect).IsRectEmpty() == 0) FillAll({&fill, 1});
}

void QtCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  const CRect box(rect);
  const CRect part = box & clip_ & CRect(CPoint(0, 0), Size());
  if (part.IsRectEmpty() != 0) return;
  const int length = downwards ? box.Height() : box.Width();
  const int start = downwards ? box.top : box.left;
  const int end = downwards ? part.bottom : part.right;
  std::vector<QtFill> lines;
  lines.reserve(static_cast<std::size_t>(downwards ? part.Height() : part.Width()));
  for (int at = downwards ? part.top : part.left; at < end; ++at)
    lines.push_back(
        {downwards ? CRect(box.left, at, box.right, at + 1) : CRect(at, box.top, at + 1, box.bottom),
         Mixed(first, last, at - start, length)});
  FillAll(lines);
}

void QtCanvas::Frame(const RECT& rect, COLORREF colour, int width) {
  const CRect box(rect);
  if (width <= 0 || box.IsRectEmpty() != 0) return;
  if (width >= (box.Width() + 1) / 2 || width >= (box.Height() + 1) / 2) return Fill(box, colour);
  const QtFill edges[] = {{{box.left, box.top, box.right, box.top + width}, colour},
                          {{box.left, box.bottom - width, box.right, box.bottom}, colour},
                          {{box.left, box.top + width, box.left + width, box.bottom - width}, colour},
                          {{box.right - width, box.top + width, box.right, box.bottom - width}, colour}};
  FillAll(edges);
}

void QtCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  std::vector<QtFill> fills;
  for (const CRect& run : LineRuns(from, to, stroke, clip_ & CRect(CPoint(0, 0), Size())))
    fills.push_back({run, stroke.colour});
  if (!fills.empty()) FillAll(fills);
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
  if (const QtGlyphText* const glyphs = ground_->IsPicture() ? face.Glyphs().Of(text) : nullptr)
    return PutGlyphs({at.x, at.y + face.metrics.tmAscent}, *glyphs, colour, within);
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
  if (run != nullptr && !run->shaped && run->drawn && shapings_left_ > 0 && CanBeKept(face.font, text)) {
    --shapings_left_;
    run->shaped = GlyphRunsOf(ToQt(text), face.font);
  }
  const QPoint base(at.x, at.y + face.metrics.tmAscent);
  if (run != nullptr && run->shaped) {
    for (const QGlyphRun& glyphs : *run->shaped) drawing->drawGlyphRun(base, glyphs);
    return;
  }
  if (run != nullptr) run->drawn = true;
  drawing->drawText(base, ToQt(text));
}

// False: the ink meets the clip's edges, or what it is to stand on is not of one colour.
bool QtCanvas::PutStamps(const CRect& ink, CPoint base, const QtGlyphText& text, COLORREF colour,
                         const RECT* within) {
  const CRect part = within == nullptr ? ink & clip_ : ink & clip_ & *within;
  if (part != ink || !Holds(ink)) return false;
  const CSize from_corner = base - ink.TopLeft();
  const QRgb pen = qRgb(GetRValue(colour), GetGValue(colour), GetBValue(colour));
  const auto put = [&](QRgb ground, QRgb* corner, std::ptrdiff_t line) {
    text.stamps->Stamp(pen, ground, corner + from_corner.cy * line + from_corner.cx, line);
  };
  return ground_->PutOnEven(ink, std::cref(put));
}

void QtCanvas::PutGlyphs(CPoint base, const QtGlyphText& text, COLORREF colour, const RECT* within) {
  const CRect ink = text.ink + base;
  if (text.stamps != nullptr && PutStamps(ink, base, text, colour, within)) return;
  const QtDrawing drawing(*this, ink, within, QtDrawing::Bounds::kExact);
  if (!drawing) return;
  drawing.UseInk(colour);
  if (text.beginning != nullptr)
    for (const QGlyphRun& run : *text.beginning) drawing->drawGlyphRun(ToQt(base), run);
  drawing->drawGlyphRun(ToQt(base), *text.run);
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
