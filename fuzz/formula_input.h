#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "tests/reference/formula_difference.h"

// How the bytes of an input become texts and numbers: readable, so that a saved input can be read and
// written by hand. A byte below 128 is its own unit; the others stand for units of interest, chosen from a
// table.
namespace lorv::fuzz {

using reference::Text;

inline Text TextOf(const std::string& bytes) {
  static const TCHAR kHigh[] = {0x5899, 0x9AD8, 0x4E2D, 0xD800, 0xDC00, 0xD83D, 0xDE00, 0xFF08,
                                0xFF0C, 0x3000, 0x00A0, 0x00E9, 0xFFFF, 0xFEFF, 0x0130, 0x0101};
  Text text;
  for (const char c : bytes) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte != 0) text += byte < 128 ? static_cast<TCHAR>(byte) : kHigh[byte % 16];
  }
  return text;
}

// The input as lines; the last one needs no end. A line end inside a text is written "\v".
inline std::vector<std::string> LinesOf(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += static_cast<char>(data[i]);
    }
  }
  return lines;
}

inline double NumberOf(const std::string& text) {
  if (text == "nan") return std::numeric_limits<double>::quiet_NaN();
  if (text == "inf") return std::numeric_limits<double>::infinity();
  if (text == "-inf") return -std::numeric_limits<double>::infinity();
  return reference::ReadNumber(TextOf(text));
}

// Ends the run with what differs.
inline void Require(const std::string& difference, const std::string& input) {
  if (difference.empty()) return;
  std::fprintf(stderr, "%s\n%s\n", input.c_str(), difference.c_str());
  std::abort();
}

}  // namespace lorv::fuzz
