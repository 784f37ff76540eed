#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "image/decode/raster.h"

// What the parts of the JPEG decoder share.
namespace lorv::jpeg {

constexpr int kBlockSize = 8;
constexpr int kBlockArea = 64;

using Block = std::array<std::int16_t, kBlockArea>;        // coefficients, row by row
using Quantities = std::array<std::uint16_t, kBlockArea>;  // row by row

// Places of the coefficients in the order of the file.
inline constexpr std::array<unsigned char, kBlockArea> kZigzag = {
    0,  1,  8,  16, 9,  2,  3,  10, 17, 24, 32, 25, 18, 11, 4,  5,  12, 19, 26, 33, 40, 48,
    41, 34, 27, 20, 13, 6,  7,  14, 21, 28, 35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23,
    30, 37, 44, 51, 58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};

struct Component {
  unsigned id = 0;
  int across = 1;  // samples beside and below one another in a unit of all components
  int down = 1;
  unsigned quantities = 0;
  int width = 0;  // samples that count
  int height = 0;
  int blocks_across = 0;  // with those that fill up the last unit
  int blocks_down = 0;
  std::vector<unsigned char> samples;  // blocks_across * 8 a row
  std::vector<Block> blocks;           // of a progressive picture, until it is whole
  int last_level = 0;                  // of the block before, while a scan is read

  std::int64_t BlockCount() const { return std::int64_t{blocks_across} * blocks_down; }
  std::size_t Stride() const { return static_cast<std::size_t>(blocks_across) * kBlockSize; }
  unsigned char* BlockAt(int x, int y) {
    return samples.data() + static_cast<std::size_t>(y) * kBlockSize * Stride() +
           static_cast<std::size_t>(x) * kBlockSize;
  }
};

struct Picture {
  int width = 0;
  int height = 0;
  bool progressive = false;
  int most_across = 1;
  int most_down = 1;
  int units_across = 0;
  int units_down = 0;
  int restart_interval = 0;
  bool has_jfif = false;
  int adobe_transform = -1;  // -1: no such mark
  std::vector<Component> components;
  std::array<Quantities, 4> quantities = {};
};

// From coefficients to samples, `stride` apart: exact whole-number arithmetic, rounded as the free reference
// library does.
void TransformBlock(const Block& block, const Quantities& quantities, unsigned char* out, std::size_t stride);

// The same of a block whose other coefficients are 0.
void TransformLevel(int level, const Quantities& quantities, unsigned char* out, std::size_t stride);

// The same by its formula alone, for coefficients of any size.
void TransformPlainly(const Block& block, const Quantities& quantities, unsigned char* out,
                      std::size_t stride);

// Bits behind the point of the factors; and of what columns give to rows.
constexpr int kPointBits = 13;
constexpr int kFirstBits = 2;
constexpr int kColumnShift = kPointBits - kFirstBits;
constexpr int kRowShift = kPointBits + kFirstBits + 3;

// From samples to the picture: finer grids for components of fewer samples, then colours.
void PutColours(Picture& picture, Raster& out);

}  // namespace lorv::jpeg
