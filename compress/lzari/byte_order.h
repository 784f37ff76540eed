#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

// The one pair of functions that load and store the numbers of files and streams; the byte order is in the
// name. Addresses need no alignment. The caller guarantees that the bytes are there.
namespace lorv {

inline std::uint32_t SwapBytes(std::uint32_t value) {
  return __builtin_bswap32(value);
}
inline std::uint64_t SwapBytes(std::uint64_t value) {
  return __builtin_bswap64(value);
}

inline std::uint32_t LoadBig32(const unsigned char* from) {
  std::uint32_t value;
  std::memcpy(&value, from, sizeof value);
  return std::endian::native == std::endian::little ? SwapBytes(value) : value;
}

inline std::uint64_t LoadBig64(const unsigned char* from) {
  std::uint64_t value;
  std::memcpy(&value, from, sizeof value);
  return std::endian::native == std::endian::little ? SwapBytes(value) : value;
}

inline std::uint16_t LoadLittle16(const unsigned char* from) {
  return static_cast<std::uint16_t>(from[0] | from[1] << 8);
}

inline std::uint32_t LoadLittle32(const unsigned char* from) {
  return static_cast<std::uint32_t>(LoadLittle16(from)) | static_cast<std::uint32_t>(LoadLittle16(from + 2))
                                                              << 16;
}

inline std::uint64_t LoadLittle64(const unsigned char* from) {
  return LoadLittle32(from) | static_cast<std::uint64_t>(LoadLittle32(from + 4)) << 32;
}

inline void StoreLittle16(unsigned char* to, std::uint32_t value) {
  to[0] = static_cast<unsigned char>(value);
  to[1] = static_cast<unsigned char>(value >> 8);
}

inline void StoreLittle32(unsigned char* to, std::uint32_t value) {
  StoreLittle16(to, value);
  StoreLittle16(to + 2, value >> 16);
}

}  // namespace lorv
