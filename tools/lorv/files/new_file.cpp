#include "tools/lorv/files/new_file.h"

#include "platform/ports/platform.h"
#include "tools/lorv/files/stream_file.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Opens what a verb writes to. All that can be refused is refused here, before any work: a long
// take-off must not end with a path that may not be written.

namespace lorv::tool {

NewFile::NewFile(const std::string& path, bool replace, std::ostream& standard_output)
    : path_(path), replace_(replace) {
  if (path == "-") {
    stream_ = std::make_unique<StreamFile>(standard_output);
    return;
  }
  Files& files = *PortsInForce().files;
  const CString wide = CString::FromUtf8(path);
  // Asked first: a device is not replaced by a file, as /dev/null would be.
  const auto facts = files.Facts(wide);
  if (facts && facts->is_stream) {
    stream_ = files.Open(wide, FileUse::kStream);
    if (!stream_) Fail("it may not be written to");
  } else {
    OpenFile(replace);
  }
}

void NewFile::OpenFile(bool replace) {
  Files& files = *PortsInForce().files;
  const CString given = CString::FromUtf8(path_);
  // The file that the link leads to is written beside its own place, where a name can be given without
  // copying.
  const CString goal = files.FollowLinks(given);
  const auto facts = files.Facts(goal);
  if (facts && facts->IsFolder()) Fail("it is a folder");
  // A link that leads nowhere is there, too: somebody put it, and would miss it.
  if (!replace && (facts || files.IsLink(given))) {
    throw BadInput(Say("{} is there already; --force replaces it", {Quoted(path_)}));
  }
  if (files.IsLink(goal)) Fail("it is a link that leads in a circle");
  if (facts && (facts->attributes & kAttributeReadOnly) != 0) Fail("it is read-only");
  file_.emplace(goal);
  if (!file_->IsOpen()) Fail("its folder is missing or may not be written to");
  // Before any byte is in it: what was private stays so at every moment.
  if (facts) files.CopyRights(goal, file_->Path());
}

void NewFile::Fail(const std::string& why) const {
  throw BadInput(Say("{} cannot be written: {}", {Quoted(path_), Say(why)}));
}

void NewFile::Keep() {
  if (stream_) {
    if (!stream_->Flush()) Fail("what reads it has ended, or there is no more room");
    return;
  }
  if (!file_->Close(true)) Fail("the disk is full or failed");
  if (!file_->TakeName(replace_)) Fail("another program holds it, or has made it meanwhile");
  // The name is in the folder, which the disk holds apart from the file.
  if (!PortsInForce().files->SyncFolder(FolderOfPath(file_->Goal()))) Fail("the disk failed");
}

}  // namespace lorv::tool
