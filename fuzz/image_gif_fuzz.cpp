// Any bytes as a GIF file.

#include "fuzz/image_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return lorv::fuzz::FuzzReader(lorv::OpenGif, data, size);
}
