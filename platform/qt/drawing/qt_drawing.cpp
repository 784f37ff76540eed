#include "platform/qt/drawing/qt_drawing.h"

#include <QRegion>
#include <algorithm>
#include <cmath>

#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_text_cache.h"

// What a painter is set to, and how little of it is changed from one call to the next.

namespace lorv {
namespace {

constexpr std::uint64_t kEverything = ~std::uint64_t{0};  // no canvas' clip

}  // namespace

QtDrawing::QtDrawing(const QtCanvas& canvas, const CRect& bounds, const RECT* within, Bounds kind)
    : ground_(*canvas.ground_), part_(bounds & canvas.clip_) {
  if (within != nullptr) part_ &= *within;
  // What lies outside the clip takes no painter and no lock.
  if (part_.IsRectEmpty() != 0) return;
  painter_ = ground_.Open(part_);
  if (painter_ == nullptr) return;
  Claim(canvas);
  if (kind == Bounds::kExact && part_ == bounds && canvas.Holds(part_)) {
    LiftClip(canvas);
  } else {
    UseClip(canvas, within);
  }
}

void QtDrawing::Fill(const CRect& rect, const QColor& colour) const {
  const double ratio = ground_.Ratio();
  if (ratio == 1) return painter_->fillRect(ToQt(rect), colour);
  const auto snapped = [ratio](LONG at) { return std::round(at * ratio) / ratio; };
  // What is one pixel thin stays as thin everywhere.
  const auto length = [&](LONG from, LONG to) {
    return to - from == 1 ? std::max(std::floor(ratio), 1.0) / ratio : snapped(to) - snapped(from);
  };
  painter_->fillRect(QRectF(snapped(rect.left), snapped(rect.top), length(rect.left, rect.right),
                            length(rect.top, rect.bottom)),
                     colour);
}

void QtDrawing::UseFace(const QtFace& face) const {
  if (ground_.setting_.face == face.number) return;
  painter_->setFont(face.font);
  ground_.setting_.face = face.number;
}

void QtDrawing::UseInk(COLORREF colour) const {
  QtGround::Setting& setting = ground_.setting_;
  if (setting.inked && setting.ink == colour) return;
  painter_->setPen(ToQt(colour));
  setting.inked = true;
  setting.ink = colour;
}

void QtDrawing::Claim(const QtCanvas& canvas) const {
  QtGround::Setting& setting = ground_.setting_;
  if (setting.canvas == canvas.number_) return;
  // The faces are numbered by thread, and a canvas is drawn on by one of them.
  setting.face = 0;
  // The clip is another canvas', which number 0 stands for.
  if (setting.clip != kEverything) setting.clip = 0;
  setting.canvas = canvas.number_;
}

void QtDrawing::UseClip(const QtCanvas& canvas, const RECT* within) const {
  QtGround::Setting& setting = ground_.setting_;
  if (within == nullptr && setting.clipped && setting.clip == canvas.clip_number_) return;
  const CRect clip = within == nullptr ? canvas.clip_ : canvas.clip_ & *within;
  if (canvas.clip_parts_.IsEmpty()) {
    painter_->setClipRect(ToQt(clip));
  } else {
    QRegion parts;
    for (const CRect& part : canvas.clip_parts_.Rects()) parts += ToQt(part & clip);
    painter_->setClipRegion(parts);
  }
  setting.clipped = true;
  // A narrowed clip is for one call; number 0 is no canvas' clip, so the next call sets its own.
  setting.clip = within == nullptr ? canvas.clip_number_ : 0;
}

// For what the canvas' clip lets through whole.
void QtDrawing::LiftClip(const QtCanvas& canvas) const {
  QtGround::Setting& setting = ground_.setting_;
  if (!setting.clipped || setting.clip == canvas.clip_number_ || setting.clip == kEverything) return;
  // Not by turning clipping off: the painter would take no region any more.
  painter_->setClipRect(0, 0, painter_->device()->width(), painter_->device()->height());
  setting.clip = kEverything;
}

}  // namespace lorv
