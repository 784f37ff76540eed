#pragma once

#include <QColor>
#include <QPainter>

#include "framework/drawing/geometry.h"
#include "platform/qt/drawing/qt_canvas.h"
#include "platform/qt/drawing/qt_ground.h"

namespace lorv {

// The painter of a canvas' ground for the time of one call. The clip, the pen and the font are set only where
// they differ from what that painter has.
class QtDrawing {
 public:
  // Whether all that is drawn lies within the bounds: what cannot meet the clip's edges needs no clip.
  enum class Bounds { kAbout, kExact };

  // `within` narrows the clip for this call.
  QtDrawing(const QtCanvas& canvas, const CRect& bounds, const RECT* within = nullptr,
            Bounds kind = Bounds::kAbout);
  QtDrawing(const QtDrawing&) = delete;
  QtDrawing& operator=(const QtDrawing&) = delete;
  ~QtDrawing() {
    if (painter_ != nullptr) ground_.Close(part_);
  }

  // False: nothing of it is to be drawn.
  explicit operator bool() const { return painter_ != nullptr; }
  QPainter* operator->() const { return painter_; }

  // In whole pixels of the picture, whatever one counted pixel is: so edges are never between two of them.
  void Fill(const CRect& rect, const QColor& colour) const;
  void UseFace(const QtFace& face) const;
  void UseInk(COLORREF colour) const;
  void ForgetInk() const { ground_.setting_.inked = false; }

 private:
  void Claim(const QtCanvas& canvas) const;
  void UseClip(const QtCanvas& canvas, const RECT* within) const;
  void LiftClip(const QtCanvas& canvas) const;

  QtGround& ground_;
  CRect part_;
  QPainter* painter_ = nullptr;
};

}  // namespace lorv
