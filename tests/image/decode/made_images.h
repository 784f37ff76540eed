#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Images made for tests, byte by byte.
namespace lorv::test {

inline std::string Low16(unsigned value) {
  return {static_cast<char>(value & 255), static_cast<char>(value >> 8 & 255)};
}
inline std::string Low32(std::uint32_t value) {
  return Low16(value & 0xFFFF) + Low16(value >> 16);
}

struct MadeFrame {
  int left = 0;
  int top = 0;
  int width = 1;
  int height = 1;
  std::string numbers;  // of colours, one a pixel; in the order of the file
  int delay = -1;       // -1: no control block
  unsigned disposal = 0;
  int transparent = -1;
  bool interlaced = false;
};

// The numbers as codes of nine bits, with a new start before the table could grow.
inline std::string PackedNumbers(const std::string& numbers) {
  std::vector<unsigned> codes;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i % 200 == 0) codes.push_back(256);
    codes.push_back(static_cast<unsigned char>(numbers[i]));
  }
  codes.push_back(257);
  std::string bytes;
  unsigned held = 0;
  int count = 0;
  for (const unsigned code : codes) {
    held |= code << count;
    for (count += 9; count >= 8; count -= 8, held >>= 8) bytes += static_cast<char>(held & 255);
  }
  if (count > 0) bytes += static_cast<char>(held & 255);
  std::string blocks = "\x08";
  for (std::size_t at = 0; at < bytes.size(); at += 255) {
    const std::string block = bytes.substr(at, 255);
    blocks += static_cast<char>(block.size()) + block;
  }
  return blocks + '\0';
}

// With the colours 0 black, 1 red, 2 green, 3 blue unless they are left out.
inline std::string MadeGif(int width, int height, const std::vector<MadeFrame>& frames,
                           bool has_colours = true) {
  std::string bytes = "GIF89a" + Low16(static_cast<unsigned>(width)) + Low16(static_cast<unsigned>(height));
  bytes += has_colours ? std::string("\x81\0\0", 3) : std::string("\x01\0\0", 3);
  if (has_colours) bytes += std::string("\0\0\0\xFF\0\0\0\xFF\0\0\0\xFF", 12);
  for (const MadeFrame& frame : frames) {
    if (frame.delay >= 0) {
      bytes += std::string("\x21\xF9\x04", 3);
      bytes += static_cast<char>(frame.disposal << 2 | (frame.transparent >= 0 ? 1U : 0U));
      bytes += Low16(static_cast<unsigned>(frame.delay)) + static_cast<char>(frame.transparent) + '\0';
    }
    bytes += ',' + Low16(static_cast<unsigned>(frame.left)) + Low16(static_cast<unsigned>(frame.top)) +
             Low16(static_cast<unsigned>(frame.width)) + Low16(static_cast<unsigned>(frame.height));
    bytes += frame.interlaced ? '\x40' : '\0';
    bytes += PackedNumbers(frame.numbers);
  }
  return bytes + ';';
}

// A bitmap of Windows: a header of 40 bytes, colours, rows.
inline std::string MadeBmp(int width, int height, unsigned bits, unsigned packing, const std::string& colours,
                           const std::string& rows) {
  const std::string header = Low32(40) + Low32(static_cast<std::uint32_t>(width)) +
                             Low32(static_cast<std::uint32_t>(height)) + Low16(1) + Low16(bits) +
                             Low32(packing) + Low32(0) + Low32(0) + Low32(0) +
                             Low32(static_cast<std::uint32_t>(colours.size() / 4)) + Low32(0);
  const auto data_at = static_cast<std::uint32_t>(14 + header.size() + colours.size());
  return "BM" + Low32(0) + Low32(0) + Low32(data_at) + header + colours + rows;
}

}  // namespace lorv::test
