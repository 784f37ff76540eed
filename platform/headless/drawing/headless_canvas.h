#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/canvas_port.h"
#include "framework/text/cstring.h"

namespace lorv {

// One thing that can be seen on a headless surface.
struct Drawn {
  enum class Kind : int { Fill, Gradient, Frame, Line, Polygon, Invert, Text, Image };
  Kind kind = Kind::Fill;
  CRect bounds;  // cut to the clip
  COLORREF colour = 0;
  CString text;
  bool bold = false;
};

// What a headless window or bitmap looks like: the list of what is to be seen, in the order drawn, and the
// pixels. What a fill covers leaves the list. Letters are in the list only, they have no pixels.
// Any thread; the lock is held for one drawing call.
class HeadlessSurface {
 public:
  explicit HeadlessSurface(SIZE size) { Resize(size); }

  void Resize(SIZE size);
  SIZE Size() const;
  std::vector<Drawn> List() const;
  std::vector<DWORD> Pixels(const CRect& rect) const;

  void Add(Drawn drawn);
  void Paint(const CRect& rect, COLORREF colour);  // pixels alone
  template <class Step>
  void Change(const CRect& rect, Step change) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const CRect area = rect & CRect(CPoint(0, 0), size_);
    for (int y = area.top; y < area.bottom; ++y)
      for (int x = area.left; x < area.right; ++x) change(At(x, y), x, y);
  }
  void CopyFrom(const HeadlessSurface& source, const CRect& from, CPoint to);

 private:
  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.cx) + static_cast<std::size_t>(x);
  }
  DWORD& At(int x, int y) { return pixels_[Index(x, y)]; }

  mutable std::mutex mutex_;
  CSize size_;
  std::vector<Drawn> list_;
  std::vector<DWORD> pixels_;
};

// Every font measures alike: 7 pixels a unit, 14 from U+2E80 on (halves of a surrogate pair 7), 16 high.
constexpr int kHeadlessNarrow = 7;
constexpr int kHeadlessWide = 14;
constexpr int kHeadlessHeight = 16;
COMM_LORV_API SIZE HeadlessExtent(TextView text);

class COMM_LORV_API HeadlessCanvas : public Canvas {
 public:
  // `limit` is what can be drawn on at all.
  HeadlessCanvas(std::shared_ptr<HeadlessSurface> surface, const CRect& limit);

  SIZE Size() const override { return surface_->Size(); }
  void Fill(const RECT& rect, COLORREF colour) override;
  void Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) override;
  void Frame(const RECT& rect, COLORREF colour, int width) override;
  void Line(POINT from, POINT to, const Stroke& stroke) override;
  void Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) override;
  void Invert(const RECT& rect) override;
  void SetFont(const LOGFONT& font) override { bold_ = font.lfWeight >= FW_BOLD; }
  TEXTMETRIC Metrics() const override;
  SIZE Extent(TextView text) const override { return HeadlessExtent(text); }
  void Text(POINT at, TextView text, COLORREF colour) override;
  void SetClip(const RECT* clip) override;
  void Copy(const RECT& to, Canvas& from, POINT from_at) override;
  void Image(const PixelImage& image, const RECT& to) override;
  std::vector<DWORD> Pixels(const RECT& rect) const override { return surface_->Pixels(rect); }

 private:
  void Note(Drawn::Kind kind, const CRect& rect, COLORREF colour, TextView text = {});

  std::shared_ptr<HeadlessSurface> surface_;
  CRect limit_;
  CRect clip_;
  bool bold_ = false;
};

}  // namespace lorv
