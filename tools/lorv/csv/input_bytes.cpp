#include "tools/lorv/csv/input_bytes.h"

#include <istream>

#include "framework/objects/exceptions.h"
#include "platform/ports/platform.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/sheet_table.h"
#include "tools/lorv/language/spoken_language.h"

// Where tables come from: a file, a pipe, or a workbook that is turned into a table while it is read. The
// reader need not know which.

namespace lorv::tool {
namespace {

// The call to open reports only that it failed; people want to know what to change.
std::string Reason(const CString& path) {
  const auto facts = PortsInForce().files->Facts(path);
  if (!facts) return Say("there is no such file");
  return Say(facts->IsFolder() ? "it is a folder" : "it may not be read");
}

// Every archive begins like this, and no table of text does.
bool BeginsAnArchive(File& file) {
  char mark[4] = {};
  const bool begins =
      file.Read(mark, sizeof(mark)) == sizeof(mark) && std::string_view(mark, 4) == "PK\x03\x04";
  file.Seek(0);
  return begins;
}

}  // namespace

InputBytes::InputBytes(const std::string& path, std::istream& standard) : name_(path) {
  if (path == "-") {
    name_ = Say("standard input");
    stream_ = &standard;
    return;
  }
  const CString name = CString::FromUtf8(path);
  file_ = PortsInForce().files->Open(name, FileUse::kRead);
  if (file_ == nullptr) throw BadInput(Say("{} cannot be opened: {}", {path, Reason(name)}));
  // A workbook is known by its beginning, as people rename files. A pipe cannot be looked at and taken from
  // its beginning again.
  const std::int64_t size = file_->Size();
  if (size > 0 && BeginsAnArchive(*file_)) {
    // The progress bar has no size to go by: that of an archive says nothing of the rows in it.
    FirstSheet first = OpenFirstSheet(path);
    file_ = std::move(first.table);
    unread_sheets_ = first.unread;
    is_workbook_ = true;
    return;
  }
  size_ = size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

void InputBytes::Read(std::string& block, std::size_t size) {
  block.resize(size);
  std::int64_t count = 0;
  if (file_ != nullptr) {
    count = file_->Read(block.data(), size);
  } else {
    stream_->read(block.data(), static_cast<std::streamsize>(size));
    count = stream_->bad() ? -1 : static_cast<std::int64_t>(stream_->gcount());
  }
  if (count < 0) throw BadInput(Say("{} cannot be read", {name_}));
  block.resize(static_cast<std::size_t>(count));
  done_ += block.size();
}

}  // namespace lorv::tool
