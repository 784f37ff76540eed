#pragma once

#include <QImage>
#include <QPainter>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>

#include "framework/drawing/region.h"
#include "framework/ports/canvas_port.h"

namespace lorv {

class QtCanvas;
struct QtFace;

// A rectangle of one colour.
struct QtFill {
  CRect rect;
  COLORREF colour;
};

// What canvases draw on: a picture in memory or a page of paper. One painter serves all calls of a painting;
// the ground remembers what that painter is set to, so that a call sets only what differs.
class QtGround {
 public:
  QtGround() = default;
  QtGround(const QtGround&) = delete;
  QtGround& operator=(const QtGround&) = delete;
  virtual ~QtGround() = default;

  virtual SIZE Size() const = 0;
  virtual double Ratio() const { return 1; }  // pixels drawn for one counted
  virtual int Dpi() const { return kUsualDpi; }
  // The copy of a part with all its pixels; null where none are kept.
  virtual QImage Part(const CRect& /*rect*/) const { return {}; }
  // Whether one counted pixel is one of a picture that is drawn on.
  virtual bool IsPicture() const { return false; }
  // Sets the pixels of a picture without a painter, those that lie in `within`. False: there is no picture,
  // and a painter fills.
  virtual bool SetPixels(std::span<const QtFill> /*fills*/, std::span<const CRect> /*within*/) {
    return false;
  }
  // Where the picture has one colour all over `area`, `put` is called with that, the area's first pixel and
  // the pixels from one line to the next, and sets what it likes of the area. False: nothing was called.
  using PutOver = std::function<void(QRgb ground, QRgb* corner, std::ptrdiff_t line)>;
  virtual bool PutOnEven(const CRect& /*area*/, const PutOver& /*put*/) { return false; }
  // The canvas draws no more.
  virtual void Leave(std::uint64_t /*canvas*/) {}

 protected:
  friend class QtDrawing;
  // What the painter is set to.
  struct Setting {
    std::uint64_t canvas = 0;
    std::uint64_t clip = 0;
    std::uint32_t face = 0;
    COLORREF ink = 0;
    bool inked = false;
    bool clipped = false;
  };
  // Between both calls nothing else draws. Null: there is nothing to draw on.
  virtual QPainter* Open(const CRect& part) = 0;
  virtual void Close(const CRect& part) = 0;

  Setting setting_;
};

// A window's picture, or a bitmap's. Kept under a lock, so a window can be drawn on at any time and from any
// thread, where the widget set allows it on the screen in one event only. That event merely copies.
// The painter stays open between the calls of the windows' thread; what the lock costs is a hundredth of a
// text's time.
class QtSurface : public QtGround {
 public:
  // `changed` is called, from whatever thread draws, when something is to be brought to the screen.
  explicit QtSurface(SIZE size, std::function<void()> changed = {}, double ratio = 1);
  ~QtSurface() override;

  // Keeps what is there; new ground is white.
  void Resize(SIZE size, double ratio);
  SIZE Size() const override;
  double Ratio() const override { return ratio_; }
  int Dpi() const override { return dpi_; }
  void SetDpi(int dpi) { dpi_ = dpi; }
  QImage Part(const CRect& rect) const override;
  bool IsPicture() const override { return ratio_ == 1; }
  bool SetPixels(std::span<const QtFill> fills, std::span<const CRect> within) override;
  bool PutOnEven(const CRect& area, const PutOver& put) override;
  void Leave(std::uint64_t canvas) override;
  void Show(QPainter& screen, QPoint at, const QRect& part);
  // Moves pixels so far, to where the rectangle is. False: not by whole pixels, and they stand as they were.
  bool Shift(const CRect& to_where, SIZE by);
  // All of it will be drawn: what is drawn in it need not be noted one by one.
  void Mark(const Region& parts);
  Region TakeChanged();

 protected:
  QPainter* Open(const CRect& part) override;
  void Close(const CRect& part) override;

 private:
  void Provide();
  void EndPainter();
  uchar* Bits();
  void SetPixels(uchar* bits, const CRect& rect, COLORREF colour) const;
  bool Note(const CRect& part);
  QRect Device(const CRect& rect) const;

  mutable std::mutex mutex_;
  CSize size_;
  std::atomic<double> ratio_;
  std::atomic<int> dpi_{kUsualDpi};
  QImage image_;  // made when first drawn on
  QPainter painter_;
  Region changed_part_;
  const std::function<void()> changed_;
};

}  // namespace lorv
