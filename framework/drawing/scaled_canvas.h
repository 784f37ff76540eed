#pragma once

#include <memory>

#include "framework/ports/canvas_port.h"

namespace lorv {

// A canvas that draws on another one, larger or smaller: what was laid out for a screen goes onto paper, or
// is shown enlarged.
//
// Units: pixels of the drawing; each is `scale` pixels of the surface. What has a size on the drawing has at
//   least one pixel of the surface, so that lines do not vanish. Dots per inch are counted as the drawing's,
//   so that measures in inches stay what they are.
// Edges: a scale of 0, below 0 or NaN counts as 1. Copies are scaled pictures of what the source keeps. The
// surface is shared. Thread as Canvas says.
//
//   ScaledCanvas canvas(page, 2.0);  canvas.Fill({0, 0, 5, 1}, 0)  fills 10 x 2 pixels of the page
class COMM_LORV_API ScaledCanvas : public Canvas {
 public:
  ScaledCanvas(std::shared_ptr<Canvas> surface, double scale);

  SIZE Size() const override;
  int Dpi() const override;
  void Fill(const RECT& rect, COLORREF colour) override;
  void Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) override;
  void Frame(const RECT& rect, COLORREF colour, int width) override;
  void Line(POINT from, POINT to, const Stroke& stroke) override;
  void Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) override;
  void Invert(const RECT& rect) override;
  void SetFont(const LOGFONT& font) override;
  TEXTMETRIC Metrics() const override;
  SIZE Extent(TextView text) const override;
  void Text(POINT at, TextView text, COLORREF colour) override;
  void ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) override;
  void SetClip(const RECT* clip) override;
  bool Shows(const RECT& rect) const override;
  void Copy(const RECT& to, Canvas& from, POINT from_at) override;
  void Image(const PixelImage& image, const RECT& to) override;
  std::vector<DWORD> Pixels(const RECT& /*rect*/) const override { return {}; }

 private:
  LONG Up(LONG place) const;
  LONG Down(LONG size) const;
  POINT Up(POINT at) const { return {Up(at.x), Up(at.y)}; }
  RECT Up(const RECT& rect) const;
  Stroke Up(const Stroke& stroke) const;

  std::shared_ptr<Canvas> surface_;
  double scale_;
};

}  // namespace lorv
