#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/text/cstring.h"
#include "platform/ports/files.h"

namespace lorv::tool {

// A file that appears whole or not at all: it is written beside its place and takes its name at the end.
// What stood there before stays as it was until then, and for good when something fails.
class OutputFile {
 public:
  // Throws BadInput when nothing can be written there.
  explicit OutputFile(const std::string& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  // Without Commit: removes what was written.
  ~OutputFile();

  // Throws BadInput when the disk is full and the like.
  void Write(std::string_view bytes);
  void Commit();

 private:
  [[noreturn]] void Fail() const;
  void Flush();

  std::string name_;
  CString path_;
  CString beside_;
  std::unique_ptr<File> file_;
  std::string held_;
};

}  // namespace lorv::tool
