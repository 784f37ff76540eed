#include "tools/lorv/files/unfinished_file.h"

#include "platform/ports/platform.h"

// A file under construction. Its name by chance lies in the goal's folder, hence on the same disk, so taking
// the goal's name is one step of the file system: others see the old file or the new one.

namespace lorv::tool {

// The name is remembered before the file is there, so that no moment lies between.
UnfinishedFile::UnfinishedFile(const CString& goal)
    : goal_(goal), path_(UnfinishedPath(goal)), name_(std::make_unique<UnfinishedName>(path_)) {
  file_ = PortsInForce().files->Open(path_, FileUse::kCreateNew);
  if (!file_) name_.reset();
}

UnfinishedFile::~UnfinishedFile() {
  // Closed first: Windows removes no file that is open.
  file_.reset();
  if (name_) PortsInForce().files->Remove(path_);
}

bool UnfinishedFile::Close(bool sync) {
  const bool written = sync ? file_->Sync() : file_->Flush();
  file_.reset();
  return written;
}

bool UnfinishedFile::SyncClosed() const {
  // Opened again for the call alone: thousands of files cannot stay open until their batch is full.
  const auto file = PortsInForce().files->Open(path_, FileUse::kAppend);
  return file && file->Sync();
}

bool UnfinishedFile::TakeName(bool replace) {
  Files& files = *PortsInForce().files;
  if (!(replace ? files.Replace(path_, goal_) : files.Rename(path_, goal_))) return false;
  // From here on an interruption must not take it away.
  name_.reset();
  return true;
}

}  // namespace lorv::tool
