#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "image/decode/raster.h"

namespace lorv::tiff {

constexpr unsigned kWhiteIsZero = 0;
constexpr unsigned kBlackIsZero = 1;
constexpr unsigned kColours = 2;
constexpr unsigned kPalette = 3;

enum class Packing : int { kNone, kLzw, kDeflate, kRunLengths };
enum class Alpha : int { kNone, kPlain, kPremultiplied };

// Numbers of the file in its byte order. What lies behind its end is 0.
class Numbers {
 public:
  Numbers() = default;
  Numbers(std::string_view bytes, bool high_first) : bytes_(bytes), high_first_(high_first) {}

  std::string_view Bytes() const { return bytes_; }
  bool HighFirst() const { return high_first_; }
  bool Has(std::uint64_t at, std::uint64_t count) const {
    return at <= bytes_.size() && count <= bytes_.size() - at;
  }
  unsigned At8(std::uint64_t at) const {
    return Has(at, 1) ? static_cast<unsigned char>(bytes_[static_cast<std::size_t>(at)]) : 0;
  }
  unsigned At16(std::uint64_t at) const {
    const unsigned first = At8(at);
    const unsigned second = At8(at + 1);
    return high_first_ ? first << 8 | second : second << 8 | first;
  }
  std::uint32_t At32(std::uint64_t at) const {
    const std::uint32_t first = At16(at);
    const std::uint32_t second = At16(at + 2);
    return high_first_ ? first << 16 | second : second << 16 | first;
  }

 private:
  std::string_view bytes_;
  bool high_first_ = false;
};

// The values of a field: read where they stand, never copied, for a file may claim any count of them.
struct Field {
  unsigned type = 0;
  std::uint32_t count = 0;
  std::uint64_t at = 0;

  std::uint32_t Value(const Numbers& file, std::uint32_t index) const;
};

// A directory of the file: how one page is stored.
struct Page {
  int width = 0;
  int height = 0;
  unsigned bits = 1;  // of every sample
  unsigned samples = 1;
  unsigned meaning = kBlackIsZero;
  Packing packing = Packing::kNone;
  Alpha alpha = Alpha::kNone;
  bool differences = false;    // each sample is stored as what it adds to the one at its left
  bool planes = false;         // one sample after the other, not pixel by pixel
  bool low_bit_first = false;  // within a byte
  int piece_width = 0;         // a strip is as wide as the page
  int piece_height = 0;
  Field offsets;
  Field sizes;
  Field palette;

  int Across() const { return (width + piece_width - 1) / piece_width; }
  int Down() const { return (height + piece_height - 1) / piece_height; }
  unsigned SamplesInPiece() const { return planes ? 1 : samples; }
  std::size_t PieceRowBytes() const {
    return (static_cast<std::size_t>(piece_width) * SamplesInPiece() * bits + 7) / 8;
  }
};

// False for a page of a kind that is not decoded here, or that claims too much; `page` is undefined then.
bool ReadPage(const Numbers& file, std::uint32_t at, Page& page);

// The directories that can be shown, in order, up to the first that cannot or that has been there before.
std::vector<std::uint32_t> ListPages(const Numbers& file, std::uint32_t first);

}  // namespace lorv::tiff
