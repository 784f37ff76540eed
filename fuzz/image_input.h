#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "image/decode/image_decoders.h"
#include "image/decode/image_reader.h"

// What the decoders promise of any bytes: a file is refused or has frames of the size that it declares, the
// same ones from a clone and in another order.
namespace lorv::fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

inline void RequireWhole(ImageReader& image) {
  constexpr int kMostAsked = 4;
  constexpr std::int64_t kMostLookedAt = 1 << 16;  // larger ones only cost time
  Require(image.FrameCount() > 0 && image.Width() > 0 && image.Height() > 0);
  Require(image.Delays().empty() || image.Delays().size() == static_cast<std::size_t>(image.FrameCount()));
  const auto clone = image.Clone();
  for (int i = std::min(image.FrameCount(), kMostAsked) - 1; i >= 0; --i) {
    const auto [width, height] = image.FrameSize(i);
    if (std::int64_t{width} * height > kMostLookedAt) continue;
    const Raster& frame = image.Frame(i);
    Require(frame.width == width && frame.height == height);
    Require(frame.pixels.size() == static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    Require(clone->Frame(i).pixels == frame.pixels);
  }
}

// A kind of many frames, whatever the bytes begin with.
inline int FuzzReader(std::unique_ptr<ImageReader> (*open)(std::string), const std::uint8_t* data,
                      std::size_t size) {
  const auto image = open(std::string(reinterpret_cast<const char*>(data), size));
  if (image != nullptr) RequireWhole(*image);
  return 0;
}

// A kind of one picture; decoded twice it is the same.
inline int FuzzPicture(bool (*decode)(std::string_view, Raster&), std::string_view bytes) {
  Raster raster;
  if (!decode(bytes, raster)) return 0;
  Require(raster.pixels.size() ==
          static_cast<std::size_t>(raster.width) * static_cast<std::size_t>(raster.height));
  Raster again;
  Require(decode(bytes, again) && again.pixels == raster.pixels);
  return 0;
}

inline std::string_view AsBytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace lorv::fuzz
