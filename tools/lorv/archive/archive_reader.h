#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "compress/zip/zip_reader.h"
#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// How much an archive may unpack to, so that one made to fill the disk does no harm. The user can raise both.
inline constexpr std::uint64_t kDefaultMegabytes = 4096;
inline constexpr std::uint64_t kDefaultRatio = 200;

struct UnpackLimits {
  std::uint64_t megabytes = kDefaultMegabytes;
  std::uint64_t ratio = kDefaultRatio;  // of what comes out to the archive's own size
};

// The options --max-size and --max-ratio.
void AddLimitOptions(VerbSyntax& syntax, UnpackLimits& limits);

struct Item {
  int index = 0;
  std::string name;  // UTF-8, with "/" between folders
  ZipListing listing;
  bool IsFolder() const { return (listing.attributes & kAttributeFolder) != 0; }
};

// An archive that is open, with all that its directory says. Failure: BadInput.
class ArchiveReader {
 public:
  explicit ArchiveReader(const std::string& path);

  ZipReader& Zip() { return zip_; }
  const std::vector<Item>& Items() const { return items_; }
  std::uint64_t Total() const { return total_; }  // bytes of all entries that can be unpacked
  // The archive opened once more, for another thread; null where it is no longer the same.
  std::unique_ptr<ArchiveReader> OpenAgain() const;
  // Refuses an archive that unpacks to more than the limits allow, or whose entries lie in one another.
  void CheckLimits(const UnpackLimits& limits) const;

 private:
  struct Again {};
  ArchiveReader(const std::string& path, Again);
  void Open();

  std::string path_;
  std::unique_ptr<File> file_;
  ZipReader zip_;
  std::vector<Item> items_;
  std::uint64_t total_ = 0;
};

}  // namespace lorv::tool
