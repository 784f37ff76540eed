#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "compress/zip/zip_fault.h"
#include "framework/native/native_types.h"
#include "platform/ports/files.h"

namespace lorv::zip {

// Where an archive is read from: an open file or a block of memory. One thread at a time.
class Input {
 public:
  Input() = default;
  explicit Input(std::unique_ptr<File> owned) : owned_(std::move(owned)), file_(owned_.get()) { Measure(); }
  explicit Input(File& file) : file_(&file) { Measure(); }
  explicit Input(std::span<const unsigned char> memory) : memory_(memory), size_(memory.size()) {}

  std::uint64_t Size() const { return size_; }
  // Whether all bytes asked for were there.
  bool ReadAt(std::uint64_t position, std::span<unsigned char> to);
  // The bytes from a position on, `most` at most; none where reading fails. Valid until the next read.
  std::span<const unsigned char> Block(std::uint64_t position, std::size_t most);

 private:
  void Measure();

  std::unique_ptr<File> owned_;
  File* file_ = nullptr;
  std::span<const unsigned char> memory_;
  std::uint64_t size_ = 0;
  std::uint64_t at_ = ~std::uint64_t{0};  // where the file stands
  std::vector<unsigned char> block_;
};

// An entry as the directory of an archive describes it.
struct DirectoryEntry {
  std::string name;
  std::string unicode_name;  // UTF-8; empty where the archive has none
  std::uint32_t made_by = 0;
  std::uint32_t flags = 0;
  std::uint32_t method = 0;
  std::uint32_t dos_time = 0;
  std::uint32_t crc = 0;
  std::uint32_t attributes = 0;
  std::uint64_t packed_size = 0;
  std::uint64_t size = 0;
  std::uint64_t offset = 0;  // of the local header in the input; beyond its size where the archive is damaged

  bool operator==(const DirectoryEntry&) const = default;
};

// Reads the directory. What stands before and behind an archive in its file is passed over.
// Result: kNone, kNoArchive, kParts or kDirectory.
ZipFault ReadDirectory(Input& input, std::vector<DirectoryEntry>& entries);

// The local header of an entry.
struct LocalEntry {
  std::uint64_t data = 0;  // where the packed data begins
  bool has_times = false;
  FileTimes times;  // of the "UT" field; 0 for one that it does not have
};

// Result: kZipOk, or kZipCorrupt where no header of this entry stands.
DWORD ReadLocal(Input& input, const DirectoryEntry& entry, LocalEntry& local);

}  // namespace lorv::zip
