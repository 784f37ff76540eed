#pragma once

#include <memory>

#include "platform/ports/files.h"
#include "tools/lorv/files/unfinished_names.h"

namespace lorv::tool {

// A file that is written under an unfinished name beside its goal and takes the goal's name when it is whole.
// Dropped before that, or interrupted, nothing of it stays. One thread at a time.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(const CString& goal);
  UnfinishedFile(UnfinishedFile&&) = default;
  UnfinishedFile& operator=(UnfinishedFile&&) = delete;
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile();

  // False where it could not be made; nothing else may then be called.
  bool IsOpen() const { return file_ != nullptr; }
  File& Stream() { return *file_; }
  const CString& Goal() const { return goal_; }
  const CString& Path() const { return path_; }

  // Closes the stream, with `sync` not before the disk has all of it. False where bytes were lost.
  bool Close(bool sync);
  // For one that was closed unsynced.
  bool SyncClosed() const;
  // Takes the goal's name; what stands there is replaced only with `replace`, and never if it is read-only.
  bool TakeName(bool replace);

 private:
  CString goal_;
  CString path_;
  std::unique_ptr<UnfinishedName> name_;  // as long as the file is to be removed
  std::unique_ptr<File> file_;
};

}  // namespace lorv::tool
