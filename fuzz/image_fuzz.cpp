// Any bytes as an image: every decoder behind its own mark. A file is refused or has frames of the size that
// it tells, the same ones from a clone and in another order.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "image/decode/image_reader.h"

namespace {

constexpr int kMostFrames = 4;
constexpr std::int64_t kMostPixels = 1 << 16;  // larger ones only cost time

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto image = lorv::OpenImage(std::string(reinterpret_cast<const char*>(data), size));
  if (image == nullptr) return 0;
  Require(image->FrameCount() > 0 && image->Width() > 0 && image->Height() > 0);
  Require(image->Delays().empty() || image->Delays().size() == static_cast<std::size_t>(image->FrameCount()));
  const auto clone = image->Clone();
  for (int i = std::min(image->FrameCount(), kMostFrames) - 1; i >= 0; --i) {
    const auto [width, height] = image->FrameSize(i);
    if (std::int64_t{width} * height > kMostPixels) continue;
    const lorv::Raster& frame = image->Frame(i);
    Require(frame.width == width && frame.height == height);
    Require(clone->Frame(i).pixels == frame.pixels);
  }
  return 0;
}
