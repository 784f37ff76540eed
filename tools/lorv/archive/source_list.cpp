#include "tools/lorv/archive/source_list.h"

#include <algorithm>
#include <filesystem>

#include "platform/ports/platform.h"
#include "tools/lorv/archive/entry_name.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Finds what is to be packed: walks the folders that the user named and gives each file its name in the
// archive. Links are followed, as people pack what they see, so circles and files reached by two ways
// have to be noticed.

namespace lorv::tool {
namespace {

// The standard library takes paths of this system's own form, and UTF-8 only as such.
std::filesystem::path NativePathOf(const std::string& utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

bool IsSame(const std::string& a, const std::string& b) {
  std::error_code none;
  return a == b || std::filesystem::equivalent(NativePathOf(a), NativePathOf(b), none);
}

std::string InFolder(const std::string& folder, const CString& name) {
  return folder + (folder.ends_with('/') || folder.ends_with('\\') ? "" : "/") + name.ToUtf8();
}

}  // namespace

void SourceList::Add(const std::string& path) {
  const auto facts = PortsInForce().files->Facts(CString::FromUtf8(path));
  if (!facts) throw BadInput(Say("{} is not there", {Quoted(path)}));
  Collect(path, *facts);
}

void SourceList::Collect(const std::string& path, const FileFacts& facts) {
  if (facts.is_stream) {
    troubles_.Add(path, Say("it is a pipe or a device"));
    return;
  }
  const std::string name = EntryNameOf(path);
  if (!name.empty()) Enter(path, name, facts);
  if (facts.IsFolder()) CollectFolder(path);
}

void SourceList::CollectFolder(const std::string& path) {
  Files& files = *PortsInForce().files;
  const CString wide = CString::FromUtf8(path);
  // Listed first: an unreadable folder would look like an empty one.
  if (!files.CanList(wide)) {
    troubles_.Add(path, Say("the folder cannot be read"));
    return;
  }
  // Only a link can lead back up; folders are compared by what they are, as links have other names for them.
  const bool again = files.IsLink(wide) && std::any_of(above_.begin(), above_.end(), [&](const auto& folder) {
                       return IsSame(folder, path);
                     });
  if (again) {
    troubles_.Add(path, Say("it is a link to a folder above it"));
    return;
  }
  above_.push_back(path);
  for (const FoundFile& found : files.List(wide, _T("*"))) {
    if (IsLeftOut(path, found.name)) continue;
    const std::string inner = InFolder(path, found.name);
    const auto facts = files.Facts(CString::FromUtf8(inner));
    if (facts) {
      Collect(inner, *facts);
    } else {
      troubles_.Add(inner, Say("it cannot be read: a link that leads nowhere, or a name that is no text"));
    }
  }
  above_.pop_back();
}

// Neither an archive into itself, nor what another run has not finished.
// The name first: asking the disk about each file of a large tree would cost more than packing small ones.
bool SourceList::IsLeftOut(const std::string& folder, const CString& name) {
  const std::string path = InFolder(folder, name);
  if (!IsUnfinishedName(name.View())) {
    return NativePathOf(path).filename() == NativePathOf(archive_).filename() && IsSame(path, archive_);
  }
  troubles_.Add(path, Say("it is the unfinished file of another run"));
  return true;
}

void SourceList::Enter(const std::string& path, const std::string& name, const FileFacts& facts) {
  const auto [known, fresh] = names_.try_emplace(name, path);
  if (!fresh) {
    // The same file twice, by two arguments or links, is packed once and no trouble.
    if (facts.IsFolder() || IsSame(known->second, path)) return;
    troubles_.Add(path,
                  Say("its name in the archive, {}, is that of {}", {Quoted(name), Quoted(known->second)}));
    return;
  }
  if (LeadsOut(name)) {
    troubles_.Add(path, Say("its name would lead out of the folder that it is unpacked to"));
    return;
  }
  Source source{path, NarrowEntryName(name), {}, facts};
  source.unicode = UnicodeEntryName(name, source.narrow);
  total_ += facts.size;
  sources_.push_back(std::move(source));
}

}  // namespace lorv::tool
