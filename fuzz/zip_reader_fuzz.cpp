#include <cstdint>
#include <cstdlib>

#include "compress/zip/zip_reader.h"

// Any bytes as an archive: no entry gives more bytes than it says, and a whole one gives what its record
// says.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lorv::ZipReader zip;
  if (zip.Open(data, size) != lorv::kZipOk) return 0;
  lorv::ZipEntry entry;
  zip.GetItem(-1, entry);
  for (int i = 0, count = entry.index; i < count && i < 50; ++i) {
    if (zip.GetItem(i, entry) != lorv::kZipOk) continue;
    if (entry.index != i || entry.size < 0 || entry.compressed_size < 0) std::abort();
    std::uint64_t taken = 0;
    // A whole archive of small entries is what is looked for: not gigabytes of zeros.
    zip.UnzipItem(i, [&](std::span<const unsigned char> bytes) {
      taken += bytes.size();
      return taken < 1U << 22;
    });
    if (taken > static_cast<std::uint64_t>(entry.size)) std::abort();
  }
  return 0;
}
