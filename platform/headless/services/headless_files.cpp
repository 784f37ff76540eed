#include "platform/headless/services/headless_files.h"

#include <algorithm>
#include <cstring>

#include "framework/objects/exceptions.h"

// Files in memory with the rules of Windows: read-only files that stay, folders that must exist. Every
// question is noted for tests, and room and refusals can be set, so that full disks and locked files are
// ordinary tests.

namespace lorv {
namespace {

constexpr LONG kNumberOfRefusal = 5;
constexpr const char* kNoSuchFile = "(no such file)";

// Every separator as "\", one between two names, none at the end.
CString Plain(LPCTSTR path) {
  const CString given(path);
  CString plain;
  for (TCHAR c : given.View()) {
    if (c == '/') c = '\\';
    const bool doubled = c == '\\' && plain.Right(1) == _T("\\");
    if (!doubled) plain += c;
  }
  return plain.TrimRight(TCHAR('\\'));
}

CString FolderOf(const CString& path) {
  return path.Left(std::max(path.ReverseFind('\\'), 0));
}

CString NameOf(const CString& path) {
  return path.Mid(path.ReverseFind('\\') + 1);
}

LPCTSTR WordFor(FileUse use) {
  switch (use) {
    case FileUse::kCreate:
      return _T("open create ");
    case FileUse::kAppend:
      return _T("open append ");
    case FileUse::kCreateNew:
      return _T("open new ");
    case FileUse::kStream:
      return _T("open stream ");
    default:
      return _T("open read ");
  }
}

}  // namespace

class HeadlessFiles::OpenFile : public File {
 public:
  OpenFile(HeadlessFiles& files, const CString& path, EntryPointer entry, FileUse use)
      : files_(files), path_(path), entry_(std::move(entry)), use_(use) {}

  std::int64_t Read(void* out, std::size_t size) override {
    // Opened to write at the end only, as the system's file is.
    if (use_ == FileUse::kAppend) return -1;
    const std::string& bytes = entry_->bytes;
    if (position_ >= bytes.size()) return 0;
    const std::size_t count = std::min(size, bytes.size() - position_);
    std::memcpy(out, bytes.data() + position_, count);
    position_ += count;
    return static_cast<std::int64_t>(count);
  }

  bool Write(const void* bytes, std::size_t size) override {
    if (use_ == FileUse::kRead) return false;
    const auto room = static_cast<std::size_t>(std::max<std::int64_t>(files_.room_left, 0));
    // A full disk takes the beginning, as a real one does.
    const std::size_t count = std::min(size, room);
    std::string& held = entry_->bytes;
    // At the end as it is now: another may have written meanwhile.
    if (use_ == FileUse::kAppend) position_ = held.size();
    if (held.size() < position_ + count) held.resize(position_ + count);
    std::memcpy(held.data() + position_, bytes, count);
    position_ += count;
    files_.room_left -= static_cast<std::int64_t>(count);
    entry_->facts.size = held.size();
    entry_->facts.times.write = files_.clock_.Now();
    return count == size;
  }

  bool Seek(std::uint64_t position) override {
    position_ = position;
    return true;
  }

  std::int64_t Size() override { return static_cast<std::int64_t>(entry_->bytes.size()); }

  bool Flush() override { return true; }

  bool Sync() override {
    files_.asked.push_back(CString(_T("sync ")) + path_);
    return true;
  }

  bool SetTimes(const FileTimes& times) override { return files_.SetTimes(path_, times); }

 private:
  HeadlessFiles& files_;
  CString path_;
  // Shared with the table: what is removed or replaced meanwhile stays whole for this file.
  EntryPointer entry_;
  FileUse use_;
  std::size_t position_ = 0;
};

HeadlessFiles::HeadlessFiles(Clock& clock) : clock_(clock) {
  // The empty one holds what is named without a folder.
  for (const LPCTSTR folder : {_T(""), _T("C:"), _T("D:")}) Make(folder, kAttributeFolder);
}

void HeadlessFiles::Put(const CString& path, const std::string& bytes, DWORD attributes) {
  const CString plain = Plain(path);
  for (CString folder = FolderOf(plain); !Find(folder); folder = FolderOf(folder)) {
    Make(folder, kAttributeFolder);
  }
  const EntryPointer entry = Make(plain, attributes);
  entry->bytes = bytes;
  entry->facts.size = bytes.size();
}

std::string HeadlessFiles::BytesOf(const CString& path) const {
  const EntryPointer entry = Find(path);
  return entry ? entry->bytes : kNoSuchFile;
}

HeadlessFiles::EntryPointer HeadlessFiles::Find(const CString& path) const {
  const auto found = entries_.find(Plain(path));
  return found == entries_.end() ? nullptr : found->second;
}

HeadlessFiles::EntryPointer HeadlessFiles::Make(const CString& path, DWORD attributes) {
  auto entry = std::make_shared<Entry>();
  const std::int64_t now = clock_.Now();
  entry->facts.attributes = attributes;
  entry->facts.times = {now, now, now};
  entries_[Plain(path)] = entry;
  return entry;
}

bool HeadlessFiles::IsFolder(const CString& path) const {
  const EntryPointer entry = Find(path);
  return entry && entry->facts.IsFolder();
}

int HeadlessFiles::CauseAgainst(const CString& path, FileUse use) const {
  if (refused.contains(path) || IsFolder(path)) return CFileException::accessDenied;
  if (Find(path)) {
    const bool kept = use == FileUse::kCreateNew || (IsReadOnly(path) && use != FileUse::kRead);
    return kept ? CFileException::accessDenied : CFileException::none;
  }
  if (!IsFolder(FolderOf(Plain(path)))) return CFileException::badPath;
  const bool must_stand = use == FileUse::kRead || use == FileUse::kStream;
  return must_stand ? CFileException::fileNotFound : CFileException::none;
}

bool HeadlessFiles::IsReadOnly(const CString& path) const {
  const EntryPointer entry = Find(path);
  return entry && (entry->facts.attributes & kAttributeReadOnly) != 0;
}

std::unique_ptr<File> HeadlessFiles::Open(LPCTSTR path, FileUse use, FileError* error) {
  asked.push_back(CString(WordFor(use)) + path);
  if (const int cause = CauseAgainst(path, use)) {
    if (error != nullptr) *error = {cause, kNumberOfRefusal};
    return nullptr;
  }
  EntryPointer entry = Find(path);
  if (!entry) entry = Make(path, kAttributeNormal);
  if (use == FileUse::kCreate) entry->bytes.clear();
  return std::make_unique<OpenFile>(*this, path, entry, use);
}

std::optional<FileFacts> HeadlessFiles::Facts(LPCTSTR path) {
  const EntryPointer entry = Find(path);
  if (!entry) return std::nullopt;
  FileFacts facts = entry->facts;
  // By the bytes: a file that is open for writing is growing.
  facts.size = entry->bytes.size();
  facts.is_stream = streams.contains(path);
  return facts;
}

bool HeadlessFiles::SetAttributes(LPCTSTR path, DWORD attributes) {
  const EntryPointer entry = Find(path);
  if (!entry) return false;
  // A folder stays one: that is no attribute that can be set.
  entry->facts.attributes = attributes | (entry->facts.attributes & kAttributeFolder);
  return true;
}

bool HeadlessFiles::SetTimes(LPCTSTR path, const FileTimes& times) {
  const EntryPointer entry = Find(path);
  if (!entry) return false;
  FileTimes& kept = entry->facts.times;
  // 0 leaves a time as it is.
  if (times.access != 0) kept.access = times.access;
  if (times.creation != 0) kept.creation = times.creation;
  if (times.write != 0) kept.write = times.write;
  return true;
}

bool HeadlessFiles::Remove(LPCTSTR path) {
  asked.push_back(CString(_T("remove ")) + path);
  const EntryPointer entry = Find(path);
  const bool kept = !entry || refused.contains(path) || entry->facts.IsFolder() || IsReadOnly(path);
  if (kept) return false;
  entries_.erase(Plain(path));
  return true;
}

bool HeadlessFiles::Replace(LPCTSTR from, LPCTSTR to) {
  asked.push_back(CString(_T("replace ")) + to + _T(" by ") + from);
  const EntryPointer entry = Find(from);
  const bool kept = !entry || refused.contains(from) || refused.contains(to) || IsFolder(to) ||
                    IsReadOnly(to) || !IsFolder(FolderOf(Plain(to)));
  if (kept) return false;
  // In this order: both may be one name.
  entries_.erase(Plain(from));
  entries_[Plain(to)] = entry;
  return true;
}

bool HeadlessFiles::Rename(LPCTSTR from, LPCTSTR to) {
  return !Find(to) && Replace(from, to);
}

bool HeadlessFiles::SyncFolder(LPCTSTR folder) {
  asked.push_back(CString(_T("sync folder ")) + folder);
  return IsFolder(folder);
}

bool HeadlessFiles::CanList(LPCTSTR folder) {
  return IsFolder(folder) && !unreadable.contains(Plain(folder));
}

bool HeadlessFiles::MakeFolder(LPCTSTR path) {
  asked.push_back(CString(_T("make folder ")) + path);
  if (refused.contains(path) || Find(path) || !IsFolder(FolderOf(Plain(path)))) return false;
  Make(path, kAttributeFolder);
  return true;
}

std::vector<FoundFile> HeadlessFiles::List(LPCTSTR folder, LPCTSTR pattern) {
  std::vector<FoundFile> found;
  const CString place = Plain(folder);
  const CString fitting(pattern);
  for (const auto& [path, entry] : entries_) {
    const CString name = NameOf(path);
    if (name.IsEmpty() || FolderOf(path) != place || !FitsPattern(name.View(), fitting.View())) continue;
    found.push_back({name, entry->facts.IsFolder()});
  }
  return found;
}

}  // namespace lorv
