#pragma once

#include <memory>
#include <span>

#include "framework/drawing/geometry.h"
#include "framework/drawing/region.h"
#include "framework/ports/canvas_port.h"
#include "platform/qt/drawing/qt_ground.h"

namespace lorv {

struct QtFace;
struct QtGlyphText;
class QtTextCache;

// The canvas over a ground: it keeps clip and font, the ground's painter draws. The ground lives as long. One
// thread at a time; several canvases of one ground may draw from several threads, as far as the ground
// allows.
class QtCanvas : public Canvas {
 public:
  // `limit` is what can be drawn on at all.
  QtCanvas(std::shared_ptr<QtGround> ground, Region limit);
  ~QtCanvas() override;

  SIZE Size() const override { return ground_->Size(); }
  int Dpi() const override { return ground_->Dpi(); }
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
  std::vector<DWORD> Pixels(const RECT& rect) const override;

 private:
  friend class QtDrawing;
  const QtFace& Face(QtTextCache& cache) const;
  // Whether the clip lets all of that through, which lies within its bounds.
  bool Holds(const CRect& part) const;
  // One after the other, cut to the clip.
  void FillAll(std::span<const QtFill> fills);
  bool PutStamps(const CRect& ink, CPoint base, const QtGlyphText& text, COLORREF colour, const RECT* within);
  void PutGlyphs(CPoint base, const QtGlyphText& text, COLORREF colour, const RECT* within);
  void PutText(POINT at, TextView text, COLORREF colour, const RECT* within);

  std::shared_ptr<QtGround> ground_;
  const std::uint64_t number_;
  const Region limit_;
  // What can be drawn on now: one rectangle, or all of several.
  CRect clip_;
  Region clip_parts_;  // empty where `clip_` says it all
  std::uint64_t clip_number_ = 0;
  LOGFONT description_;
  // Found again when the canvas is used by another thread.
  mutable const QtTextCache* cache_ = nullptr;
  mutable std::uint32_t cache_age_ = 0;
  mutable const QtFace* face_ = nullptr;
  int shapings_left_;  // texts that may still be shaped for keeping
};

// An image's pixels row by row.
std::vector<DWORD> PixelsOf(const QImage& image);

}  // namespace lorv
