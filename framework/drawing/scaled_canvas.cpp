#include "framework/drawing/scaled_canvas.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "framework/ports/desktop_port.h"

// Edges are scaled and not sizes, so that what touches on the drawing touches on the surface.

namespace lorv {
namespace {

LONG Rounded(double value) {
  // Places far outside stay within what drawing adds to them.
  constexpr double kFarthest = 1 << 28;
  return static_cast<LONG>(std::lround(std::clamp(value, -kFarthest, kFarthest)));
}

}  // namespace

ScaledCanvas::ScaledCanvas(std::shared_ptr<Canvas> surface, double scale)
    : surface_(std::move(surface)), scale_(std::isfinite(scale) && scale > 0 ? scale : 1) {
  SetFont({});
}

LONG ScaledCanvas::Up(LONG place) const {
  return Rounded(static_cast<double>(place) * scale_);
}

// What a text takes on the drawing: never less, or it would be cut.
LONG ScaledCanvas::Down(LONG size) const {
  return Rounded(std::ceil(static_cast<double>(size) / scale_ - 1e-6));
}

RECT ScaledCanvas::Up(const RECT& rect) const {
  RECT up = {Up(rect.left), Up(rect.top), Up(rect.right), Up(rect.bottom)};
  // A line of one pixel must not vanish on a smaller surface.
  if (rect.right > rect.left) up.right = std::max(up.right, up.left + 1);
  if (rect.bottom > rect.top) up.bottom = std::max(up.bottom, up.top + 1);
  return up;
}

Stroke ScaledCanvas::Up(const Stroke& stroke) const {
  Stroke up = stroke;
  up.width = std::max(1, static_cast<int>(Up(LONG{stroke.width})));
  return up;
}

SIZE ScaledCanvas::Size() const {
  const SIZE size = surface_->Size();
  return {Rounded(std::floor(static_cast<double>(size.cx) / scale_)),
          Rounded(std::floor(static_cast<double>(size.cy) / scale_))};
}

int ScaledCanvas::Dpi() const {
  return std::max(1, static_cast<int>(Rounded(surface_->Dpi() / scale_)));
}

void ScaledCanvas::Fill(const RECT& rect, COLORREF colour) {
  surface_->Fill(Up(rect), colour);
}

void ScaledCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  surface_->Gradient(Up(rect), first, last, downwards);
}

void ScaledCanvas::Frame(const RECT& rect, COLORREF colour, int width) {
  surface_->Frame(Up(rect), colour, std::max(1, static_cast<int>(Up(LONG{width}))));
}

void ScaledCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  surface_->Line(Up(from), Up(to), Up(stroke));
}

void ScaledCanvas::Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) {
  std::vector<POINT> up;
  up.reserve(corners.size());
  for (const POINT corner : corners) up.push_back(Up(corner));
  const Stroke scaled = edge == nullptr ? Stroke() : Up(*edge);
  surface_->Polygon(up, edge == nullptr ? nullptr : &scaled, inside);
}

void ScaledCanvas::Invert(const RECT& rect) {
  surface_->Invert(Up(rect));
}

void ScaledCanvas::SetFont(const LOGFONT& font) {
  // A font without a height would have that of the surface.
  LOGFONT scaled = font.lfHeight == 0 ? DesktopInForce().DialogFont() : font;
  const LONG height = Up(scaled.lfHeight);
  // A height of 0 would choose the surface's own font size; the sign says which height is meant.
  scaled.lfHeight = height != 0 ? height : (scaled.lfHeight < 0 ? -1 : 1);
  scaled.lfWidth = Up(scaled.lfWidth);
  surface_->SetFont(scaled);
}

TEXTMETRIC ScaledCanvas::Metrics() const {
  TEXTMETRIC metrics = surface_->Metrics();
  for (LONG* const size :
       {&metrics.tmHeight, &metrics.tmAscent, &metrics.tmDescent, &metrics.tmInternalLeading,
        &metrics.tmExternalLeading, &metrics.tmAveCharWidth, &metrics.tmMaxCharWidth})
    *size = Down(*size);
  return metrics;
}

SIZE ScaledCanvas::Extent(TextView text) const {
  const SIZE size = surface_->Extent(text);
  return {Down(size.cx), Down(size.cy)};
}

void ScaledCanvas::Text(POINT at, TextView text, COLORREF colour) {
  surface_->Text(Up(at), text, colour);
}

void ScaledCanvas::ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) {
  surface_->ClippedText(Up(at), text, colour, Up(within));
}

void ScaledCanvas::SetClip(const RECT* clip) {
  const RECT up = clip == nullptr ? RECT{} : Up(*clip);
  surface_->SetClip(clip == nullptr ? nullptr : &up);
}

bool ScaledCanvas::Shows(const RECT& rect) const {
  return surface_->Shows(Up(rect));
}

void ScaledCanvas::Copy(const RECT& to, Canvas& from, POINT from_at) {
  const int width = static_cast<int>(to.right - to.left);
  const int height = static_cast<int>(to.bottom - to.top);
  // By way of the pixels, as the source may have another scale.
  const std::vector<DWORD> pixels =
      from.Pixels({from_at.x, from_at.y, from_at.x + width, from_at.y + height});
  if (!pixels.empty()) Image({width, height, pixels.data()}, to);
}

void ScaledCanvas::Image(const PixelImage& image, const RECT& to) {
  surface_->Image(image, Up(to));
}

}  // namespace lorv
