#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "compress/zip/zip_directory.h"
#include "compress/zip/zip_format.h"
#include "compress/zip/zip_result.h"
#include "framework/native/export.h"
#include "platform/ports/files.h"

namespace lorv {

// An entry as the opening side describes it. With index -1 in the question, `index` is the count of entries
// and nothing else is set.
struct ZipEntry {
  int index = 0;
  char name[zip::kNameUnits] = {};  // as stored; one marked as UTF-8 in the system's narrow code page
  DWORD attributes = 0;             // of Windows
  std::int64_t access_time = 0;     // file times: counts of 100 nanoseconds since 1601, 0 where not given
  std::int64_t creation_time = 0;
  std::int64_t write_time = 0;
  std::int32_t compressed_size = 0;
  std::int32_t size = 0;
};

// An entry as a user wants to see it: of any size, under a name of any length.
struct ZipListing {
  std::string name;  // UTF-8: the archive's Unicode name where it has one
  DWORD attributes = 0;
  FileTimes times;
  std::uint64_t compressed_size = 0;
  std::uint64_t size = 0;
  ZipFault fault = ZipFault::kNone;  // what keeps it from being unzipped, as far as the directory shows
};

// The opening side of ZIP archives: open, ask for entries, unzip them.
//
// Read are entries stored or deflated, of 2^31 - 1 bytes at most and with names of 259 bytes; whether made
//   here or by any other tool. Others, encrypted ones and damaged ones give 0x700 when they are asked for.
// Paths are narrow text in the system's code page. Junk before and behind the archive does no harm.
// Result: the codes of compress/zip/zip_result.h; the last one is kept for the module.
// A file or memory given stays the caller's and must live until the close. One thread at a time.
//
//   ZipReader zip;  zip.Open("p.zip");  ZipEntry entry;  zip.GetItem(-1, entry);  // entry.index entries
class COMM_LORV_API ZipReader {
 public:
  // Takes unpacked bytes; false ends the unzipping with 0x400.
  using Taker = std::function<bool(std::span<const unsigned char>)>;

  ZipReader();
  ZipReader(const ZipReader&) = delete;
  ZipReader& operator=(const ZipReader&) = delete;
  ~ZipReader();

  // 0x200 for a file that cannot be opened, 0x700 for one that is no archive.
  DWORD Open(const char* path);
  DWORD Open(File& file);
  DWORD Open(const void* data, std::size_t size);
  DWORD Close();

  DWORD GetItem(int index, ZipEntry& entry);
  // Any entry but one that is not there, also those that GetItem refuses.
  DWORD List(int index, ZipListing& listing);
  // Whether the data of entries lie within one another, as no tool packs them: such an archive may unpack to
  // any number of bytes.
  bool HasOverlaps() const;
  // Whether another archive, or the same one opened again, has the same directory.
  bool HasDirectoryOf(const ZipReader& other) const { return entries_ == other.entries_; }
  // Why the last call to open or to unzip failed.
  ZipFault LastFault() const { return fault_; }
  // 0x500 where no entry has this name; letter case counts unless `any_case`.
  DWORD FindItem(const char* name, bool any_case, ZipEntry& entry);

  // Writes an entry to a path, over what stands there, with its attributes and times.
  //
  // A folder is made, with those above it, under its OWN name below the working folder; the path counts for
  // nothing. For a file the folders of the path are made, unless the path begins with "/" or "\", has ":" as
  // second character, or holds "../" or "..\": then they must be there, else 0x200.
  // A failure on the way leaves the file with what came so far. 0x400: a block that cannot be unpacked or
  // written; 0x700: not this entry's data after all.
  DWORD UnzipItem(int index, const char* path);
  // Into an open file, and to any taker; a folder gives nothing.
  DWORD UnzipItem(int index, File& file);
  DWORD UnzipItem(int index, const Taker& take);
  // Into memory: 0x600 where the entry is larger, which is then cut.
  DWORD UnzipItem(int index, void* data, std::size_t size);

 private:
  class Inflater;

  DWORD Begin();
  DWORD Item(int index, const zip::DirectoryEntry*& entry) const;
  DWORD Fill(int index, ZipEntry& entry);
  DWORD Unzip(int index, const Taker& take);
  DWORD UnzipFile(int index, LPCTSTR path);
  ZipFault Copy(const zip::DirectoryEntry& entry, std::uint64_t data, const Taker& take, std::uint32_t& crc);
  FileTimes TimesOf(const zip::DirectoryEntry& entry);

  std::unique_ptr<zip::Input> input_;
  std::unique_ptr<Inflater> inflater_;
  std::vector<zip::DirectoryEntry> entries_;
  ZipFault fault_ = ZipFault::kNone;
};

}  // namespace lorv
