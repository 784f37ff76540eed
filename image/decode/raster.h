#pragma once

#include <cstdint>
#include <vector>

namespace lorv {

// A picture in memory: rows from the top down, each pixel 0xAARRGGBB, not premultiplied by its alpha.
struct Raster {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;

  void Resize(int new_width, int new_height, std::uint32_t colour = 0) {
    width = new_width;
    height = new_height;
    pixels.assign(static_cast<std::size_t>(new_width) * static_cast<std::size_t>(new_height), colour);
  }
  std::uint32_t* Row(int y) {
    return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
  }
  const std::uint32_t* Row(int y) const {
    return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
  }
};

constexpr std::uint32_t kOpaque = 0xFF000000;

constexpr std::uint32_t Pixel(unsigned red, unsigned green, unsigned blue, unsigned alpha = 255) {
  return alpha << 24 | red << 16 | green << 8 | blue;
}

// A picture that claims more is refused before memory is asked for.
constexpr std::int64_t kMostPixels = std::int64_t{1} << 25;

// What an image may take beside the few tables of its decoder: its file, what is unpacked of it and the
// picture. One that would take more is refused as well.
constexpr std::int64_t kMostImageMemory = 280'000'000;

inline bool IsFairSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= kMostPixels && height <= kMostPixels &&
         width * height <= kMostPixels;
}

}  // namespace lorv
