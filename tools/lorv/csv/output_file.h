#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "tools/lorv/files/new_file.h"

namespace lorv::tool {

// Text that a verb writes to where the user named a file, collected into blocks. How files appear, and what
// else may be named, is described at NewFile.
class OutputFile {
 public:
  // "-" is `standard_output`. Throws BadInput when nothing can be written there.
  OutputFile(const std::string& path, std::ostream& standard_output);

  // Throws BadInput when the disk is full and the like.
  void Write(std::string_view bytes);
  // All is written; without it nothing of a file stays.
  void Commit();

 private:
  void Flush();

  std::string name_;
  NewFile file_;
  std::string held_;
};

}  // namespace lorv::tool
