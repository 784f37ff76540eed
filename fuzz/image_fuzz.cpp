// Any bytes as an image: every decoder behind its own mark.

#include "fuzz/image_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return lorv::fuzz::FuzzReader(lorv::OpenImage, data, size);
}
