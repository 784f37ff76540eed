#pragma once

#include <QImage>
#include <QPainter>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "framework/drawing/region.h"
#include "framework/ports/canvas_port.h"

namespace lorv {

class QtCanvas;
struct QtFace;

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
  void Leave(std::uint64_t canvas) override;
  void Show(QPainter& screen, QPoint at, const QRect& part);
  // Moves what is in the area. False: it cannot be moved by whole pixels, and stands as it was.
  bool Shift(const CRect& area, SIZE by);
  // All of it will be drawn: what is drawn in it need not be noted one by one.
  void Mark(const Region& parts);
  Region TakeChanged();

 protected:
  QPainter* Open(const CRect& part) override;
  void Close(const CRect& part) override;

 private:
  void Provide();
  void EndPainter();
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
