#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/ports/files.h"
#include "tools/lorv/archive/entry_troubles.h"

namespace lorv::tool {

// A file or folder to be packed, and the names of its entry.
struct Source {
  std::string path;
  std::string narrow;
  std::string unicode;  // empty where the narrow name says it all
  FileFacts facts;
};

// What is to be packed: files, and folders with all that is in them, each once. What cannot be packed is
// reported and left out. Throws BadInput only for a path of the user's that is not there.
class SourceList {
 public:
  // `archive` is left out when it lies in a folder that is packed, and so are unfinished files.
  SourceList(std::string archive, EntryTroubles& troubles)
      : archive_(std::move(archive)), troubles_(troubles) {}

  void Add(const std::string& path);
  const std::vector<Source>& Sources() const { return sources_; }
  std::uint64_t Total() const { return total_; }

 private:
  void Collect(const std::string& path, const FileFacts& facts);
  void CollectFolder(const std::string& path);
  bool IsLeftOut(const std::string& folder, const CString& name);
  void Enter(const std::string& path, const std::string& name, const FileFacts& facts);

  std::string archive_;
  EntryTroubles& troubles_;
  std::vector<Source> sources_;
  std::map<std::string, std::string> names_;  // of entries, with the paths that they stand for
  std::vector<std::string> above_;            // the folders that are being read now
  std::uint64_t total_ = 0;
};

}  // namespace lorv::tool
