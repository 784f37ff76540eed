#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "compress/zip/zip_fault.h"
#include "compress/zip/zip_format.h"
#include "compress/zip/zip_output.h"
#include "compress/zip/zip_result.h"
#include "framework/native/export.h"
#include "platform/ports/files.h"

namespace lorv {

// The creating side of ZIP archives: create, add entries, close.
//
// Names and paths are narrow text in the system's code page; entry names are stored as they come, with "/"
//   for every "\". A name may have 259 bytes; data 2^31 - 1 bytes; the archive 65535 entries and 2^32 - 1
//   bytes. What is more is refused before anything of it is written.
// Entries are deflated at the fastest level; those whose name says that they are packed already (".zip",
//   ".gz" and the like), and folders, are stored. The write, access and creation times go with each entry.
// Result: the codes of compress/zip/zip_result.h; the last one is kept for the module. After an error each
//   further add gives 0x40000; closing still makes an archive of what came before. After the close each add
//   and each further close give 0x50000, whatever was done before and whatever they are given; before the
//   first archive is created, 0x10000.
// A file or memory given stays the caller's and must live until the close. One thread at a time.
//
//   ZipWriter zip;  zip.Create("D:\\out\\p.zip");  zip.Add("p/x.dat", "C:\\p\\x.dat");  zip.Close();
class COMM_LORV_API ZipWriter {
 public:
  ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;
  // Closes the archive if that has not been done.
  ~ZipWriter();

  // Overwrites what stands there: 0x200 where that cannot be.
  DWORD Create(const char* path);
  // Behind what an open file holds.
  DWORD Create(File& file);
  // In a block of memory; a null block is memory that grows and is the object's.
  DWORD Create(void* block, std::size_t size);

  // 0x200 for a path that cannot be opened, and for a pipe or a device, which might never end.
  DWORD Add(const char* name, const char* path);
  // From where an open file stands; `facts` are those of the file on disk, none for what is no such file: it
  // has no attributes and the time of now.
  //
  // `unicode_name` is the name in UTF-8 beside the narrow one, in the field that archives have for it, so
  // that other tools show it as it is; empty for none. Its separators are "/".
  DWORD Add(const char* name, File& file, const FileFacts* facts, std::string_view unicode_name = {});
  DWORD Add(const char* name, const void* data, std::size_t size);
  DWORD AddFolder(const char* name, std::string_view unicode_name = {});
  // Why an entry of that name and size would be refused, before anything of it is written; kNone where it
  // would be taken. Nothing is kept of the question, so others may be added afterwards.
  ZipFault Obstacle(std::string_view name, std::uint64_t size, std::string_view unicode_name = {}) const;

  // Puts all entries of another archive behind those of this one, in their order, as if they had been added
  // here. The other one is closed and in memory of its own, where it was begun; it stays as it is.
  DWORD Append(const ZipWriter& part);
  // Whether there is such an archive, and room for all of it.
  bool CanAppend(const ZipWriter& part) const;

  DWORD Close();
  // The archive in memory, valid until the object's end: 0x20000 for one in a file.
  DWORD GetMemory(const void*& data, std::size_t& size) const;

 private:
  struct Entry;
  class Deflater;

  enum class Stage { kNone, kOpen, kEnded };

  DWORD Begin();
  // Why nothing can be added now; kZipOk where it can.
  DWORD Refusal() const;
  DWORD AddEntry(Entry& entry, File* file, std::span<const unsigned char> memory);
  DWORD WriteEntry(Entry& entry, File* file, std::span<const unsigned char> memory);
  DWORD WriteData(Entry& entry, File* file, std::span<const unsigned char> memory);
  DWORD WriteBlock(Entry& entry, std::span<const unsigned char> bytes, bool last);
  DWORD WriteLocalHeader(const Entry& entry, bool again);
  DWORD WriteDescriptor(const Entry& entry);
  DWORD WriteDirectory();
  DWORD Keep(DWORD result);

  std::optional<zip::Output> output_;
  std::unique_ptr<Deflater> deflater_;
  std::vector<unsigned char> directory_;  // the central headers, as they will stand in the archive
  std::size_t count_ = 0;
  Stage stage_ = Stage::kNone;
  bool failed_ = false;
};

}  // namespace lorv
