#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "platform/ports/files.h"

namespace lorv::tool {

// Bytes that come in from a file or a stream, a block at a time. Of a workbook (.xlsx) the first sheet comes
// in, as a table of commas in UTF-8.
class InputBytes {
 public:
  // Opens a file, "-" being the stream given. Throws BadInput, with the reason, when it does not open.
  InputBytes(const std::string& path, std::istream& standard);

  // Fills `block`, up to `size` bytes; nothing is left when it comes back empty. Throws BadInput when
  // reading fails.
  void Read(std::string& block, std::size_t size);

  // What comes in is UTF-8, whatever the user says of his files.
  bool IsWorkbook() const { return is_workbook_; }
  // Sheets of the workbook with something in them that do not come in.
  int UnreadSheets() const { return unread_sheets_; }
  // How the messages call it.
  const std::string& Name() const { return name_; }
  // Of a file; 0 where it is not known.
  std::uint64_t Size() const { return size_; }
  std::uint64_t Done() const { return done_; }

 private:
  std::string name_;
  std::unique_ptr<File> file_;
  std::istream* stream_ = nullptr;
  std::uint64_t size_ = 0;
  std::uint64_t done_ = 0;
  bool is_workbook_ = false;
  int unread_sheets_ = 0;
};

}  // namespace lorv::tool
