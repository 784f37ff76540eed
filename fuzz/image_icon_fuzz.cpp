// Any bytes as a ICO file.

#include "fuzz/image_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return lorv::fuzz::FuzzPicture(lorv::DecodeIcon, lorv::fuzz::AsBytes(data, size));
}
