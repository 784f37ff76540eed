#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "image/decode/tiff/tiff_page.h"

namespace lorv::tiff {

// The bytes of one strip or tile, unpacked piece by piece as they are asked for: a page needs memory for one
// row of a piece and not for the whole of it.
class PackedBytes {
 public:
  PackedBytes() = default;
  PackedBytes(const PackedBytes&) = delete;
  PackedBytes& operator=(const PackedBytes&) = delete;
  virtual ~PackedBytes() = default;

  // False where the piece is damaged or ends early; `to` is undefined then.
  virtual bool Read(unsigned char* to, std::size_t count) = 0;
};

// `bytes` are read until the object ends. `low_bit_first`: the bits of every byte are turned before it is
// unpacked.
std::unique_ptr<PackedBytes> OpenPacked(Packing packing, std::string_view bytes, bool low_bit_first);

}  // namespace lorv::tiff
