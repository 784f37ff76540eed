// Any bytes as a JPEG file of at most 255 pixels each way: larger ones only cost time.

#include "fuzz/image_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(lorv::fuzz::AsBytes(data, size));
  for (std::size_t at = 0; at + 8 < bytes.size(); ++at) {
    const bool is_head = bytes[at] == '\xFF' && bytes[at + 1] >= '\xC0' && bytes[at + 1] <= '\xC2';
    if (is_head) bytes[at + 5] = bytes[at + 7] = '\0';
  }
  return lorv::fuzz::FuzzPicture(lorv::DecodeJpeg, bytes);
}
