// Any bytes as a TIFF file.

#include "fuzz/image_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return lorv::fuzz::FuzzReader(lorv::OpenTiff, data, size);
}
