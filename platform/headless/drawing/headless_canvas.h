#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/drawing/region.h"
#include "framework/ports/canvas_port.h"
#include "framework/text/cstring.h"
#include "platform/headless/drawing/drawn_list.h"

namespace lorv {

// What a headless window or bitmap looks like: the list of what is to be seen, in the order drawn, and the
// pixels. What fills cover leaves the list. Letters are in the list only, they have no pixels.
// Any thread; the lock is held for one drawing call.
class HeadlessSurface {
 public:
  explicit HeadlessSurface(SIZE size) { Resize(size); }

  void Resize(SIZE size);
  SIZE Size() const;
  int Dpi() const { return dpi_; }
  void SetDpi(int dpi) { dpi_ = dpi; }
  std::vector<Drawn> List() const;
  std::size_t Count() const;
  std::vector<DWORD> Pixels(const CRect& rect) const;

  void Add(Drawn drawn, Region seen, bool covers);
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

  std::atomic<int> dpi_{kUsualDpi};
  mutable std::mutex mutex_;
  CSize size_;
  DrawnList list_;
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
  HeadlessCanvas(std::shared_ptr<HeadlessSurface> surface, Region limit);

  SIZE Size() const override { return surface_->Size(); }
  int Dpi() const override { return surface_->Dpi(); }
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
  void ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) override;
  void SetClip(const RECT* clip) override;
  bool Shows(const RECT& rect) const override;
  void Copy(const RECT& to, Canvas& from, POINT from_at) override;
  void Image(const PixelImage& image, const RECT& to) override;
  std::vector<DWORD> Pixels(const RECT& rect) const override { return surface_->Pixels(rect); }

 private:
  void Note(Drawn::Kind kind, const CRect& rect, COLORREF colour, TextView text = {}, bool covers = false);
  // The parts of the rectangle that can be drawn on.
  Region Open(const CRect& rect) const;
  std::vector<CRect> Parts(const CRect& rect) const { return Open(rect).Rects(); }
  template <class Step>
  void Change(const CRect& rect, Step change) {
    for (const CRect& part : Parts(rect)) surface_->Change(part, change);
  }

  std::shared_ptr<HeadlessSurface> surface_;
  const Region limit_;
  Region clip_;
  bool bold_ = false;
};

}  // namespace lorv
