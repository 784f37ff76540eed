#pragma once

#include <memory>
#include <optional>
#include <string>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/files/unfinished_file.h"

namespace lorv::tool {

// What a verb writes to where the user named a file: the one way for all of them.
//
// "-" is standard output. A pipe or a device is written to as it stands. A file appears whole or not at all:
//   it is written beside its place and takes its name at the end, when the disk has it; what stood there
//   before stays as it was until then, and gives its rights to the new one. A link stays, and the file that
//   it leads to is written. A folder and a read-only file are refused.
// Failure: BadInput, with the path as the user gave it. Dropped without Keep, nothing of a file stays.
class NewFile {
 public:
  // What stands there is replaced only with `replace`; pipes, devices and standard output need none.
  NewFile(const std::string& path, bool replace, std::ostream& standard_output);

  File& Stream() { return stream_ ? *stream_ : file_->Stream(); }
  // All is written. Gives a file its name.
  void Keep();

 private:
  void OpenFile(bool replace);
  [[noreturn]] void Fail(const std::string& why) const;

  std::string path_;
  std::unique_ptr<File> stream_;
  std::optional<UnfinishedFile> file_;
  bool replace_;
};

}  // namespace lorv::tool
