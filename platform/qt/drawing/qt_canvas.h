#pragma once

#include <QFont>
#include <QImage>
#include <QRegion>
#include <functional>
#include <memory>
#include <mutex>

#include "framework/drawing/geometry.h"
#include "framework/ports/canvas_port.h"

class QPainter;

namespace lorv {

// What a window looks like, kept as an image under a lock: so a window can be drawn on at any time and from
// any thread, where Qt allows it on the screen in one event only. That event merely copies.
class QtSurface {
 public:
  // `changed` is called, from whatever thread draws, when something is to be brought to the screen.
  explicit QtSurface(SIZE size, std::function<void()> changed = {});

  // Keeps what is there; new ground is white.
  void Resize(SIZE size, double ratio);
  SIZE Size() const;
  void Draw(const CRect& clip, const CRect& bounds, const std::function<void(QPainter&)>& draw);
  void Show(QPainter& screen, QPoint at, const QRect& part) const;
  QImage Part(const CRect& rect) const;
  CRect TakeChanged();

 private:
  void Provide();

  mutable std::mutex mutex_;
  CSize size_;
  double ratio_ = 1;
  QImage image_;  // made when first drawn on
  CRect changed_part_;
  const std::function<void()> changed_;
};

class QtCanvas : public Canvas {
 public:
  // `limit` is what can be drawn on at all.
  QtCanvas(std::shared_ptr<QtSurface> surface, const CRect& limit);

  SIZE Size() const override { return surface_->Size(); }
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
  void SetClip(const RECT* clip) override;
  void Copy(const RECT& to, Canvas& from, POINT from_at) override;
  void Image(const PixelImage& image, const RECT& to) override;
  std::vector<DWORD> Pixels(const RECT& rect) const override;

 private:
  void Draw(const CRect& bounds, const std::function<void(QPainter&)>& draw);

  std::shared_ptr<QtSurface> surface_;
  CRect limit_;
  CRect clip_;
  QFont font_;
};

// An image's pixels row by row.
std::vector<DWORD> PixelsOf(const QImage& image);

}  // namespace lorv
