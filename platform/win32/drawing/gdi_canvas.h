#pragma once

#include <memory>

#include "framework/ports/canvas_port.h"
#include "platform/win32/drawing/gdi_font.h"

// The canvas over the system's device contexts. What it draws on is a target: a window's client area, what a
// window has to repaint, or memory.
namespace lorv {

class GdiTarget {
 public:
  GdiTarget() = default;
  GdiTarget(const GdiTarget&) = delete;
  GdiTarget& operator=(const GdiTarget&) = delete;
  virtual ~GdiTarget() = default;

  virtual HDC Context() = 0;  // null: what is drawn is lost
  virtual SIZE Size() const = 0;
  // For a call that fills the rectangle: what was there before is not asked for.
  virtual HDC ContextToFill(const RECT& /*rect*/) { return Context(); }
  virtual HDC ContextToAsk() { return Context(); }  // nothing is drawn with it
  // Dots per inch of the screen or the paper; a context itself answers for the first screen.
  virtual int Dpi() { return GetDeviceCaps(ContextToAsk(), LOGPIXELSY); }
  // What can be drawn on at all, in the context's own pixels; null: no limit.
  virtual HRGN Limit() const { return nullptr; }
};

// A 32-bit picture in memory. Its context counts from `corner`, which is its left top pixel.
class GdiMemory : public GdiTarget {
 public:
  explicit GdiMemory(SIZE size, POINT corner = {0, 0});
  ~GdiMemory() override;

  HDC Context() override { return context_; }
  void SetCorner(POINT corner);
  SIZE Size() const override { return size_; }
  DWORD* Pixels() { return pixels_; }  // from the top down, 0x00RRGGBB; null for lack of memory

 private:
  SIZE size_;
  HDC context_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ former_ = nullptr;
  DWORD* pixels_ = nullptr;
};

class GdiCanvas : public Canvas {
 public:
  explicit GdiCanvas(std::unique_ptr<GdiTarget> target);
  ~GdiCanvas() override;

  SIZE Size() const override { return target_->Size(); }
  int Dpi() const override;
  void Fill(const RECT& rect, COLORREF colour) override;
  void Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) override;
  void Frame(const RECT& rect, COLORREF colour, int width) override;
  void Line(POINT from, POINT to, const Stroke& stroke) override;
  void Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) override;
  void Invert(const RECT& rect) override;
  void SetFont(const LOGFONTW& font) override;
  TEXTMETRICW Metrics() const override;
  SIZE Extent(TextView text) const override;
  void Text(POINT at, TextView text, COLORREF colour) override;
  void ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) override;
  void SetClip(const RECT* clip) override;
  bool Shows(const RECT& rect) const override;
  void Copy(const RECT& to, Canvas& from, POINT from_at) override;
  void Image(const PixelImage& image, const RECT& to) override;
  std::vector<DWORD> Pixels(const RECT& rect) const override;

 private:
  HDC Context() const { return target_->Context(); }
  const std::shared_ptr<const GdiFont>& Font() const;
  void PutText(POINT at, TextView text, COLORREF colour, const RECT* within);

  std::unique_ptr<GdiTarget> target_;
  LOGFONTW face_;
  mutable std::shared_ptr<const GdiFont> font_;  // made when first used
  std::shared_ptr<const GdiFont> drawn_font_;    // selected into the target
  HGDIOBJ former_font_ = nullptr;
};

}  // namespace lorv
