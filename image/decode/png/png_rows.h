#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "image/decode/piece_inflater.h"
#include "image/decode/raster.h"

// What the parts of the PNG decoder share: the header, and the rows that the packed stream brings.
namespace lorv::png {

constexpr unsigned kGrey = 0;
constexpr unsigned kColour = 2;
constexpr unsigned kPalette = 3;
constexpr unsigned kGreyAlpha = 4;
constexpr unsigned kColourAlpha = 6;

struct Header {
  int width = 0;
  int height = 0;
  unsigned depth = 0;  // bits a sample
  unsigned type = 0;
  bool interlaced = false;

  unsigned Samples() const {
    constexpr unsigned kSamples[] = {1, 0, 3, 1, 2, 0, 4};
    return kSamples[type];
  }
  std::size_t RowBytes(int columns) const {
    return (static_cast<std::size_t>(columns) * Samples() * depth + 7) / 8;
  }
  std::size_t PixelBytes() const { return (Samples() * depth + 7) / 8; }
};

// What samples mean beside the header; both come before the pixels.
struct Colours {
  std::array<std::uint32_t, 256> palette = {};
  std::size_t count = 0;
  bool has_key = false;  // pixels of exactly this colour are transparent
  std::array<unsigned, 3> key = {};
};

// The pixels of one pass: every step_x-th column and step_y-th row from a first one on.
struct Pass {
  int first_x, first_y, step_x, step_y;
};

// Takes the filters off the rows of all passes and puts their pixels into the picture. It holds two rows.
class Rows final : public RowSink {
 public:
  // Asks for the memory of the picture. Header, colours and picture are kept by reference.
  Rows(const Header& header, const Colours& colours, Raster& out);

  std::span<unsigned char> Room() override { return {row_.data(), row_.size()}; }
  bool TakeRow() override;

 private:
  void BeginPass();
  void PutRow(const unsigned char* row);
  void PutSamples(const unsigned char* row, std::uint32_t* to) const;
  std::uint32_t PixelAt(const unsigned char* row, int x) const;
  unsigned Sample(const unsigned char* row, std::size_t at) const;
  unsigned Shown(unsigned sample) const;

  const Header& header_;
  const Colours& colours_;
  Raster& out_;
  const Pass* pass_;
  const Pass* end_;
  int columns_ = 0;
  int y_ = 0;
  std::vector<unsigned char> row_;  // its filter, then its bytes; empty behind the last one
  std::vector<unsigned char> above_;
};

}  // namespace lorv::png
