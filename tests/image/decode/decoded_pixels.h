// Pixels of images from their bytes, and the colours that most of them have.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "image/decode/image_reader.h"

namespace lorv::test {

inline constexpr std::uint32_t kBlack = 0xFF000000;
inline constexpr std::uint32_t kWhite = 0xFFFFFFFF;
inline constexpr std::uint32_t kRed = 0xFFFF0000;
inline constexpr std::uint32_t kGreen = 0xFF00FF00;
inline constexpr std::uint32_t kBlue = 0xFF0000FF;

using Pixels = std::vector<std::uint32_t>;

// None where the bytes are no image.
inline Pixels PixelsOf(const std::string& bytes, int frame = 0) {
  const auto image = OpenImage(bytes);
  return image == nullptr ? Pixels() : image->Frame(frame).pixels;
}

}  // namespace lorv::test
