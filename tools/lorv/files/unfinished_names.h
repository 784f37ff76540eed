#pragma once

#include <cstddef>

#include "framework/text/cstring.h"

namespace lorv::tool {

// How many unfinished files are remembered at once; one more would stay behind an interrupted run.
inline constexpr std::size_t kMostUnfinished = 8192;

// As long as an object of this lives, the file of its path is taken away if the program is ended from
// outside. Any thread; a copy is not made.
class UnfinishedName {
 public:
  explicit UnfinishedName(const CString& path);
  UnfinishedName(const UnfinishedName&) = delete;
  UnfinishedName& operator=(const UnfinishedName&) = delete;
  ~UnfinishedName();

 private:
  std::size_t slot_;
};

// What an interruption does: the files of all paths that live are removed. For tests too.
void RemoveUnfinishedFiles();

}  // namespace lorv::tool
