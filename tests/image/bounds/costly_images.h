#pragma once

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/image/decode/made_images.h"

// Files of a few bytes that claim, or take, much when they are shown.
namespace lorv::test {

inline std::string High32(std::uint32_t value) {
  std::string bytes;
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift & 255);
  return bytes;
}

inline std::string Chunk(const std::string& name, const std::string& data) {
  const std::string body = name + data;
  const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return High32(static_cast<std::uint32_t>(data.size())) + body + High32(static_cast<std::uint32_t>(sum));
}

// So many zeros packed, without ever holding them.
inline std::string PackedZeros(std::size_t count) {
  z_stream stream = {};
  deflateInit(&stream, 1);
  std::string zeros(1 << 16, '\0');
  std::string packed;
  std::string room(1 << 16, '\0');
  while (count > 0 || stream.avail_in > 0 || stream.avail_out == 0) {
    if (stream.avail_in == 0) {
      stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
      stream.avail_in = static_cast<uInt>(std::min(count, zeros.size()));
      count -= stream.avail_in;
    }
    stream.next_out = reinterpret_cast<Bytef*>(room.data());
    stream.avail_out = static_cast<uInt>(room.size());
    const int result = deflate(&stream, count == 0 ? Z_FINISH : Z_NO_FLUSH);
    packed.append(room, 0, room.size() - stream.avail_out);
    if (result == Z_STREAM_END) break;
  }
  deflateEnd(&stream);
  return packed;
}

constexpr char kColoursWithAlpha = 6;
constexpr char kColours = 2;

// Not interlaced.
inline std::string PngWith(std::uint32_t width, std::uint32_t height, char depth, const std::string& packed,
                           char kind = kColoursWithAlpha) {
  return "\x89PNG\r\n\x1A\n" +
         Chunk("IHDR", High32(width) + High32(height) + depth + kind + std::string(3, '\0')) +
         Chunk("IDAT", packed) + Chunk("IEND", "");
}

// Nothing but zeros, all of it transparent black.
inline std::string ClearPng(std::uint32_t width, std::uint32_t height, char depth) {
  const std::size_t row = 1 + std::size_t{width} * 4 * static_cast<std::size_t>(depth / 8);
  return PngWith(width, height, depth, PackedZeros(row * height));
}

// A frame as large as the screen that brings back what was below it: the picture twice, and the numbers.
inline std::string WideGif(int width, int height, unsigned disposal, int count) {
  std::vector<MadeFrame> frames;
  for (int i = 0; i < count; ++i) frames.push_back({0, 0, width, height, {1}, 1, disposal});
  return MadeGif(width, height, frames);
}

// Small frames, each of which brings back what was below it.
inline std::string LongGif(int count) {
  std::vector<MadeFrame> frames;
  for (int i = 0; i < count; ++i)
    frames.push_back({i % 30, i % 20, 8, 8, std::string(64, static_cast<char>(i % 4)), 1, 3});
  return MadeGif(40, 30, frames);
}

// Pixels of the first colour, packed as far as the codes allow: each stands for one pixel more than the one
// before.
inline std::string PackedRun(int pixels) {
  std::string bytes;
  unsigned held = 0;
  int bits = 0;
  int width = 9;
  const auto put = [&](unsigned code) {
    held |= code << bits;
    for (bits += width; bits >= 8; bits -= 8, held >>= 8) bytes += static_cast<char>(held & 255);
  };
  unsigned known = 258;
  for (unsigned run = 1; pixels > 0; ++run) {
    run = std::min(run, static_cast<unsigned>(pixels));
    put(run == 1 ? 1 : 256 + run);
    pixels -= static_cast<int>(run);
    // The first code brings no new one.
    if (run > 1 && ++known == 1U << width && width < 12) ++width;
  }
  put(257);
  bytes += static_cast<char>(held & 255);
  std::string blocks = "\x08";
  for (std::size_t at = 0; at < bytes.size(); at += 255) {
    const std::string block = bytes.substr(at, 255);
    blocks += static_cast<char>(block.size()) + block;
  }
  return blocks + '\0';
}

// Frames as large as the screen, all of their pixels in the file; each brings back what was below it.
inline std::string RunGif(int side, int count) {
  std::string bytes = MadeGif(side, side, {});
  bytes.pop_back();
  const std::string size = Low16(static_cast<unsigned>(side));
  const std::string frame =
      std::string("\x21\xF9\4\x0C\1\0\0\0,\0\0\0\0", 13) + size + size + '\0' + PackedRun(side * side);
  for (int i = 0; i < count; ++i) bytes += frame;
  return bytes + ';';
}

inline std::string Segment(char mark, const std::string& body) {
  const std::size_t size = body.size() + 2;
  return std::string{'\xFF', mark, static_cast<char>(size >> 8), static_cast<char>(size & 255)} + body;
}

inline std::string JpegHead(char mark, int width, int height, char parts) {
  const auto high16 = [](int value) {
    return std::string{static_cast<char>(value >> 8), static_cast<char>(value & 255)};
  };
  std::string body = '\x08' + high16(height) + high16(width) + parts;
  for (char part = 1; part <= parts; ++part) body += std::string{part, '\x11', '\0'};
  return Segment(mark, body);
}

// The level's codes: 0 is no change, 10 a change of seven bits.
inline std::string JpegStart() {
  return "\xFF\xD8" + Segment('\xDB', '\0' + std::string(64, '\1')) +
         Segment('\xC4', std::string("\0\1\1", 3) + std::string(14, '\0') + std::string("\0\7", 2));
}

// A scan of levels of the first component that leaves them, or raises them by 64.
inline std::string LevelScan(bool raises) {
  const std::string bits = raises ? std::string("\xA0\x7F", 2) : std::string("\x7F", 1);
  return Segment('\xDA', std::string("\1\1\0\0\0\0", 6)) + bits;
}

}  // namespace lorv::test
