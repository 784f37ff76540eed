#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>

#include "framework/objects/exceptions.h"
#include "framework/text/utf8.h"
#include "platform/ports/file_parts.h"
#include "platform/posix/services/file_time.h"
#include "platform/posix/services/native_path.h"

// Files of the system behind the port. Where the system is more generous than Windows it is held back: a
// read-only file is neither written nor replaced nor removed by anyone, and a folder is never opened as a
// file, so programs behave alike on both.

namespace lorv {
namespace {

constexpr mode_t kFileMode = 0666;
constexpr mode_t kFolderMode = 0777;
constexpr int kMostLinks = 40;  // as the system itself follows
constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

// A signal that comes in between is no failure.
template <class Call>
ssize_t Unbroken(Call call) {
  ssize_t count = call();
  while (count < 0 && errno == EINTR) count = call();
  return count;
}

class PosixFile : public File {
 public:
  explicit PosixFile(int descriptor) : descriptor_(descriptor) {}
  ~PosixFile() override { close(descriptor_); }

  std::int64_t Read(void* out, std::size_t size) override {
    return ReadInParts(out, size, [this](char* to, std::size_t room) -> std::int64_t {
      return Unbroken([&] { return read(descriptor_, to, room); });
    });
  }

  bool Write(const void* bytes, std::size_t size) override {
    return WriteInParts(bytes, size, [this](const char* from, std::size_t room) -> std::int64_t {
      return Unbroken([&] { return write(descriptor_, from, room); });
    });
  }

  bool Seek(std::uint64_t position) override {
    return lseek(descriptor_, static_cast<off_t>(position), SEEK_SET) >= 0;
  }

  // The size of a pipe or a device is not known.
  std::int64_t Size() override {
    struct stat facts {};
    return fstat(descriptor_, &facts) == 0 && S_ISREG(facts.st_mode) ? facts.st_size : -1;
  }

  // Every write goes to the system at once.
  bool Flush() override { return true; }

  // A pipe and most devices have no disk behind them, and say so.
  bool Sync() override { return fsync(descriptor_) == 0 || errno == EINVAL || errno == ENOTSUP; }

  bool SetTimes(const FileTimes& times) override {
    const timespec native[2] = {NativeTimeOf(times.access), NativeTimeOf(times.write)};
    return futimens(descriptor_, native) == 0;
  }

 private:
  int descriptor_;
};

int FlagsOf(FileUse use) {
  switch (use) {
    case FileUse::kCreate:
      return O_RDWR | O_CREAT | O_TRUNC;
    case FileUse::kAppend:
      return O_WRONLY | O_CREAT | O_APPEND;
    case FileUse::kCreateNew:
      return O_RDWR | O_CREAT | O_EXCL;
    case FileUse::kStream:
      return O_WRONLY;
    default:
      return O_RDONLY;
  }
}

// The system would let its administrator write to a read-only file, and anybody remove it whose the folder
// is.
bool IsReadOnly(const std::string& path, bool follow) {
  struct stat facts {};
  const int result = follow ? stat(path.c_str(), &facts) : lstat(path.c_str(), &facts);
  return result == 0 && S_ISREG(facts.st_mode) && (facts.st_mode & kWriteBits) == 0;
}

bool Refused() {
  errno = EACCES;
  return false;
}

int OpenPlainFile(const std::string& path, FileUse use) {
  if ((use == FileUse::kCreate || use == FileUse::kAppend) && IsReadOnly(path, true)) {
    errno = EACCES;
    return -1;
  }
  const int descriptor = open(path.c_str(), FlagsOf(use) | O_CLOEXEC, kFileMode);
  // What was made here is no folder.
  if (descriptor < 0 || use == FileUse::kCreateNew) return descriptor;
  struct stat facts {};
  if (fstat(descriptor, &facts) != 0 || !S_ISDIR(facts.st_mode)) return descriptor;
  close(descriptor);
  errno = EACCES;
  return -1;
}

bool IsHidden(const std::string& path) {
  const std::size_t name = path.find_last_of('/') + 1;
  return path.size() > name + 1 && path[name] == '.' && path[name + 1] != '.';
}

FileFacts FactsOf(const struct stat& native, const std::string& path) {
  FileFacts facts;
  if (S_ISDIR(native.st_mode)) facts.attributes |= kAttributeFolder;
  if ((native.st_mode & kWriteBits) == 0) facts.attributes |= kAttributeReadOnly;
  if (IsHidden(path)) facts.attributes |= kAttributeHidden;
  if (facts.attributes == 0) facts.attributes = kAttributeNormal;
  facts.is_stream = !S_ISREG(native.st_mode) && !S_ISDIR(native.st_mode);
  facts.size = S_ISREG(native.st_mode) ? static_cast<std::uint64_t>(native.st_size) : 0;
  facts.times.access = FileTimeOf(native.st_atim);
  facts.times.write = FileTimeOf(native.st_mtim);
  // The system keeps no time of birth that all its file systems know: the earlier of its two changes.
  facts.times.creation = std::min(FileTimeOf(native.st_ctim), facts.times.write);
  return facts;
}

class PosixFiles : public Files {
 public:
  std::unique_ptr<File> Open(LPCTSTR path, FileUse use, FileError* error) override {
    const int descriptor = OpenPlainFile(NativePath(path), use);
    if (descriptor >= 0) return std::make_unique<PosixFile>(descriptor);
    if (error != nullptr) *error = {CFileException::ErrnoToException(errno), errno};
    return nullptr;
  }

  std::optional<FileFacts> Facts(LPCTSTR path) override {
    struct stat native {};
    const std::string name = NativePath(path);
    if (stat(name.c_str(), &native) != 0) return std::nullopt;
    return FactsOf(native, name);
  }

  bool SetAttributes(LPCTSTR path, DWORD attributes) override {
    struct stat native {};
    const std::string name = NativePath(path);
    if (stat(name.c_str(), &native) != 0) return false;
    // Only the owner's right to write is given back: the group's may never have been there.
    const mode_t others = native.st_mode & static_cast<mode_t>(07777) & ~kWriteBits;
    const bool read_only = (attributes & kAttributeReadOnly) != 0;
    const bool was_read_only = (native.st_mode & kWriteBits) == 0;
    // Nothing is touched, so other rights survive.
    if (read_only == was_read_only) return true;
    return chmod(name.c_str(), read_only ? others : others | S_IWUSR) == 0;
  }

  bool SetTimes(LPCTSTR path, const FileTimes& times) override {
    const timespec native[2] = {NativeTimeOf(times.access), NativeTimeOf(times.write)};
    return utimensat(AT_FDCWD, NativePath(path).c_str(), native, 0) == 0;
  }

  bool IsLink(LPCTSTR path) override {
    struct stat native {};
    return lstat(NativePath(path).c_str(), &native) == 0 && S_ISLNK(native.st_mode);
  }

  CString FollowLinks(LPCTSTR path) override;

  bool Remove(LPCTSTR path) override {
    const std::string name = NativePath(path);
    return IsReadOnly(name, false) ? Refused() : unlink(name.c_str()) == 0;
  }

  bool Replace(LPCTSTR from, LPCTSTR to) override {
    const std::string target = NativePath(to);
    if (IsReadOnly(target, false)) return Refused();
    return std::rename(NativePath(from).c_str(), target.c_str()) == 0;
  }

  bool Rename(LPCTSTR from, LPCTSTR to) override;
  bool CopyRights(LPCTSTR from, LPCTSTR to) override;

  bool SyncFolder(LPCTSTR folder) override {
    return InFolder(folder, [](int descriptor) { return fsync(descriptor) == 0 || errno == EINVAL; });
  }

  bool SyncAll(LPCTSTR folder) override {
    return InFolder(folder, [](int descriptor) { return syncfs(descriptor) == 0; });
  }

  bool MakeFolder(LPCTSTR path) override { return mkdir(NativePath(path).c_str(), kFolderMode) == 0; }

  std::vector<FoundFile> List(LPCTSTR folder, LPCTSTR pattern) override;

  bool CanList(LPCTSTR folder) override {
    return InFolder(folder, [](int /*descriptor*/) { return true; });
  }

 private:
  // What `work` says of the open folder; false of one that does not open.
  template <class Work>
  static bool InFolder(LPCTSTR folder, Work work) {
    const std::string name = NativePath(folder);
    const int descriptor = open(name.empty() ? "." : name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool done = work(descriptor);
    close(descriptor);
    return done;
  }
};

// Where a relative link leads counts from the folder that the link stands in.
CString PosixFiles::FollowLinks(LPCTSTR path) {
  std::string name = NativePath(path);
  std::array<char, PATH_MAX> target{};
  for (int i = 0; i < kMostLinks; ++i) {
    const ssize_t length = readlink(name.c_str(), target.data(), target.size());
    if (length < 0) return i == 0 ? CString(path) : CString::FromUtf8(name);
    const std::string to(target.data(), static_cast<std::size_t>(length));
    name.resize(to.starts_with('/') ? 0 : name.find_last_of('/') + 1);
    name += to;
  }
  return {path};
}

// File systems that do not know the one call have two: the second name and then none of the first.
bool PosixFiles::Rename(LPCTSTR from, LPCTSTR to) {
  const std::string source = NativePath(from), target = NativePath(to);
  if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) return true;
  // Any other failure means that the target stands there, or must not be touched.
  if (errno != EINVAL && errno != ENOSYS) return false;
  return link(source.c_str(), target.c_str()) == 0 && unlink(source.c_str()) == 0;
}

// Of another owner's file everything is kept but what would then be a right to act as somebody else.
bool PosixFiles::CopyRights(LPCTSTR from, LPCTSTR to) {
  struct stat native {};
  const std::string target = NativePath(to);
  if (stat(NativePath(from).c_str(), &native) != 0) return false;
  const bool owned = chown(target.c_str(), native.st_uid, native.st_gid) == 0;
  const mode_t kept = native.st_mode & static_cast<mode_t>(owned ? 07777 : 0777);
  return chmod(target.c_str(), kept) == 0;
}

bool IsFolder(const std::string& path) {
  struct stat native {};
  return stat(path.c_str(), &native) == 0 && S_ISDIR(native.st_mode);
}

std::vector<FoundFile> PosixFiles::List(LPCTSTR folder, LPCTSTR pattern) {
  FolderList list(pattern);
  std::string place = NativePath(folder);
  if (place.empty()) place = ".";
  const std::unique_ptr<DIR, int (*)(DIR*)> open_folder(opendir(place.c_str()), &closedir);
  if (!open_folder) return {};
  // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is this call's own
  while (const dirent* entry = readdir(open_folder.get())) {
    const CString name = CString::FromUtf8(entry->d_name);
    if (list.Wants(name)) list.Add(name, IsFolder(place + '/' + entry->d_name));
  }
  return list.InOrder();
}

}  // namespace

Files& NativeFiles() {
  static PosixFiles files;
  return files;
}

}  // namespace lorv
