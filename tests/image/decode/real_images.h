#pragma once

#include <cstdint>

namespace lorv::test {

// A real image, or a damaged one, of the data folder: what it holds, and its pixels as digests that every
// system and every desktop must give.
struct RealImage {
  const char* file;
  int width;  // 0: refused
  int height;
  int frames;
  std::uint64_t delays;  // their sum
  std::uint64_t digest;  // of the pixels of all frames
  std::uint64_t drawn;   // of all frames drawn on kGround
};

inline constexpr RealImage kRealImages[] = {
#include "tests/image/decode/real_images_data.inc"
};

// A colour that no alpha leaves as it is, 0xFFRRGGBB.
inline constexpr std::uint32_t kGround = 0xFFC86432;

template <class Pixels>
std::uint64_t AddToDigest(std::uint64_t digest, const Pixels& pixels) {
  for (const std::uint32_t pixel : pixels) digest = (digest ^ pixel) * 0x9E3779B97F4A7C15 + (digest >> 29);
  return digest;
}

}  // namespace lorv::test
