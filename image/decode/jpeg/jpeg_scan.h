#pragma once

#include <array>
#include <string_view>

#include "image/decode/jpeg/jpeg_bits.h"
#include "image/decode/jpeg/jpeg_picture.h"

namespace lorv::jpeg {

// Tables of codes by their numbers: of levels, and of the other coefficients.
struct CodeTables {
  std::array<Codes, 4> levels;
  std::array<Codes, 4> others;
};

// What one scan brings: which components, and for a progressive picture which coefficients and bits of them.
struct Scan {
  struct Part {
    std::size_t component = 0;
    unsigned levels = 0;
    unsigned others = 0;
  };
  std::vector<Part> parts;
  int first = 0;
  int last = 63;
  int high_bit = 0;  // 0: the first bits
  int low_bit = 0;
};

// Reads a scan from its first byte on into the samples, or the coefficients of a progressive picture. Gives
// where it ended; what is damaged or missing stays as it was.
std::size_t ReadScan(std::string_view bytes, std::size_t at, const Scan& scan, const CodeTables& tables,
                     Picture& picture);

}  // namespace lorv::jpeg
