#include <cstdint>
#include <cstdlib>
#include <memory>

#include "compress/AdRar.h"

// Any bytes: the exact decoder refuses them, or gives as many bytes as they claim. The guarded one ends too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto codec = std::make_unique<CAdRar>();
  codec->SetExactDecoding(true);
  codec->SetProgress([](std::uint32_t) {});
  const unsigned char* result = nullptr;
  int length = -1;
  try {
    codec->UnCompress(data, static_cast<int>(size), result, length);
    std::uint32_t claimed = 0;
    for (int i = 3; i >= 0; --i) claimed = claimed << 8 | data[i];
    if (claimed != (result == nullptr ? 0U : static_cast<std::uint32_t>(length))) std::abort();
  } catch (int code) {
    if (code != 1 || result != nullptr) std::abort();
  }
  // The guarded decoder trusts every count: only small ones are passed to it.
  if (size < 4 || data[1] > 8 || data[2] != 0 || data[3] != 0) return 0;
  const auto guarded = std::make_unique<CAdRar>();
  guarded->SetProgress([](std::uint32_t) {});
  guarded->UnCompress(data, static_cast<int>(size), result, length);
  return 0;
}
