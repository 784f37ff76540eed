// Any bytes as a PNG file whose sums are right: with wrong ones nothing behind them would be looked at.

#include <zlib.h>

#include "fuzz/image_input.h"

namespace {

constexpr std::size_t kSignature = 8;
constexpr std::size_t kFrame = 12;  // size, name and sum of a chunk

std::uint32_t High32(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void SetSums(std::string& bytes) {
  for (std::size_t at = kSignature; at + kFrame <= bytes.size();) {
    const std::size_t size = High32(bytes, at);
    if (size > bytes.size() - at - kFrame) return;
    const auto* const named = reinterpret_cast<const Bytef*>(bytes.data() + at + 4);
    const uLong sum = crc32(0, named, static_cast<uInt>(size + 4));
    for (std::size_t i = 0; i < 4; ++i)
      bytes[at + 8 + size + i] = static_cast<char>(sum >> (24 - 8 * i) & 255);
    at += kFrame + size;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(lorv::fuzz::AsBytes(data, size));
  SetSums(bytes);
  return lorv::fuzz::FuzzPicture(lorv::DecodePng, bytes);
}
