// Any bytes as a BMP file of at most 256 pixels each way: larger ones only cost time. Small heads have their
// sizes elsewhere and keep them.

#include "fuzz/image_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kWidth = 18;
  constexpr std::size_t kHeight = 22;
  std::string bytes(lorv::fuzz::AsBytes(data, size));
  if (bytes.size() > kHeight + 4 && bytes[14] != 12) {
    bytes.replace(kWidth + 1, 3, 3, '\0');
    bytes.replace(kHeight + 1, 3, 3, bytes[kHeight + 3] < 0 ? '\xFF' : '\0');
  }
  return lorv::fuzz::FuzzPicture(lorv::DecodeBmp, bytes);
}
