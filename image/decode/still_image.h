#pragma once

#include <memory>
#include <utility>

#include "image/decode/image_reader.h"

namespace lorv {

// An image of one frame, decoded when it was opened. Every index gives that frame. Clones share its pixels,
// which are constant: they may be used by other threads.
class StillImage final : public ImageReader {
 public:
  StillImage(ImageKind kind, Raster raster)
      : StillImage(kind, std::make_shared<const Raster>(std::move(raster))) {}
  StillImage(ImageKind kind, std::shared_ptr<const Raster> raster)
      : kind_(kind), raster_(std::move(raster)) {}

  ImageKind Kind() const override { return kind_; }
  int Width() const override { return raster_->width; }
  int Height() const override { return raster_->height; }
  const std::vector<unsigned>& Delays() const override { return no_delays_; }
  const Raster& Frame(int /*index*/) override { return *raster_; }
  std::unique_ptr<ImageReader> Clone() const override { return std::make_unique<StillImage>(kind_, raster_); }

 private:
  ImageKind kind_;
  std::shared_ptr<const Raster> raster_;
  std::vector<unsigned> no_delays_;
};

}  // namespace lorv
