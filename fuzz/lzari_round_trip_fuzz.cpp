#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "compress/AdRar.h"

// Any bytes come back whole through the exact decoder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto packer = std::make_unique<CAdRar>();
  const auto unpacker = std::make_unique<CAdRar>();
  unpacker->SetExactDecoding(true);
  packer->SetProgress([](std::uint32_t) {});
  unpacker->SetProgress([](std::uint32_t) {});
  const unsigned char* stream = nullptr;
  const unsigned char* plain = nullptr;
  int stream_length = 0;
  int length = 0;
  packer->Compress(data, static_cast<int>(size), stream, stream_length);
  unpacker->UnCompress(stream, stream_length, plain, length);
  if (static_cast<std::size_t>(length) != size) std::abort();
  if (size > 0 && std::memcmp(plain, data, size) != 0) std::abort();
  return 0;
}
