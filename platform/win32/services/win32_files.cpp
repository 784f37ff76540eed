#include <algorithm>
#include <array>
#include <vector>

#include "framework/objects/exceptions.h"
#include "platform/ports/file_parts.h"

// Files of the system behind the port. Sharing is as wide as it can be for reading, so that a file that
// another program of the suite has open can be packed or shown.

namespace lorv {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kLongestPath = 32768;
// The system's calls count in 32 bits.
constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

FILETIME ToNative(std::int64_t time) {
  const auto bits = static_cast<std::uint64_t>(time);
  return {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
}

// A time of 0 means "as it is" to the system too.
bool SetTimesOf(HANDLE handle, const FileTimes& times) {
  const FILETIME creation = ToNative(times.creation);
  const FILETIME access = ToNative(times.access);
  const FILETIME write = ToNative(times.write);
  return SetFileTime(handle, &creation, &access, &write) != 0;
}

DWORD PartOf(std::size_t room) {
  return static_cast<DWORD>(std::min(room, kLargestTransfer));
}

class Win32File : public File {
 public:
  explicit Win32File(HANDLE handle) : handle_(handle) {}
  ~Win32File() override { CloseHandle(handle_); }

  std::int64_t Read(void* out, std::size_t size) override {
    return ReadInParts(out, size, [this](char* to, std::size_t room) -> std::int64_t {
      DWORD count = 0;
      return ReadFile(handle_, to, PartOf(room), &count, nullptr) ? std::int64_t{count} : -1;
    });
  }

  bool Write(const void* bytes, std::size_t size) override {
    return WriteInParts(bytes, size, [this](const char* from, std::size_t room) -> std::int64_t {
      DWORD count = 0;
      return WriteFile(handle_, from, PartOf(room), &count, nullptr) ? std::int64_t{count} : -1;
    });
  }

  bool Seek(std::uint64_t position) override {
    LARGE_INTEGER to;
    to.QuadPart = static_cast<LONGLONG>(position);
    return SetFilePointerEx(handle_, to, nullptr, FILE_BEGIN) != 0;
  }

  std::int64_t Size() override {
    LARGE_INTEGER size;
    return GetFileSizeEx(handle_, &size) ? size.QuadPart : -1;
  }

  // Every write goes to the system at once.
  bool Flush() override { return true; }

  // What is no disk has nothing to wait for.
  bool Sync() override { return GetFileType(handle_) != FILE_TYPE_DISK || FlushFileBuffers(handle_) != 0; }

  bool SetTimes(const FileTimes& times) override { return SetTimesOf(handle_, times); }

 private:
  HANDLE handle_;
};

LPCTSTR PathOf(LPCTSTR path) {
  return path == nullptr ? _T("") : path;
}

// The system refuses to write to a read-only file and to replace one. Where it is itself run by a program on
// another system, whose administrator may do anything, it forgets to.
bool IsReadOnly(LPCTSTR path) {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
         (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

HANDLE OpenHandle(LPCTSTR path, FileUse use) {
  if ((use == FileUse::kCreate || use == FileUse::kAppend) && IsReadOnly(path)) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  switch (use) {
    case FileUse::kCreate:
      return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    case FileUse::kAppend:
      return CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    case FileUse::kCreateNew:
      // Deleting is shared, so that a program that is interrupted can take it away while it is open.
      return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                         CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    case FileUse::kStream:
      return CreateFileW(path, GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    default:
      return CreateFileW(path, GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                         nullptr);
  }
}

std::int64_t ToCount(const FILETIME& time) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32 |
                                   time.dwLowDateTime);
}

// A device's full path begins with two backslashes, a point and a backslash, under whatever name it was asked
// for.
bool IsDevice(LPCTSTR path) {
  std::array<TCHAR, MAX_PATH> full{};
  const DWORD length = GetFullPathNameW(PathOf(path), static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length >= full.size()) return false;
  return CString(static_cast<LPCTSTR>(full.data())).Left(4) == _T("\\\\.\\");
}

class Win32Files : public Files {
 public:
  std::unique_ptr<File> Open(LPCTSTR path, FileUse use, FileError* error) override {
    const HANDLE handle = OpenHandle(PathOf(path), use);
    if (handle != INVALID_HANDLE_VALUE) return std::make_unique<Win32File>(handle);
    const auto number = static_cast<LONG>(GetLastError());
    if (error != nullptr) *error = {CFileException::OsErrorToException(number), number};
    return nullptr;
  }

  std::optional<FileFacts> Facts(LPCTSTR path) override {
    WIN32_FILE_ATTRIBUTE_DATA native{};
    FileFacts facts;
    if (!GetFileAttributesExW(PathOf(path), GetFileExInfoStandard, &native)) {
      if (!IsDevice(path)) return std::nullopt;
      facts.attributes = kAttributeNormal;
      facts.is_stream = true;
      return facts;
    }
    facts.attributes = native.dwFileAttributes;
    facts.is_stream = IsDevice(path);
    facts.size = static_cast<std::uint64_t>(native.nFileSizeHigh) << 32 | native.nFileSizeLow;
    facts.times = {ToCount(native.ftLastAccessTime), ToCount(native.ftCreationTime),
                   ToCount(native.ftLastWriteTime)};
    return facts;
  }

  bool SetAttributes(LPCTSTR path, DWORD attributes) override {
    return SetFileAttributesW(PathOf(path), attributes) != 0;
  }

  bool SetTimes(LPCTSTR path, const FileTimes& times) override {
    const HANDLE handle = CreateFileW(PathOf(path), FILE_WRITE_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    const bool set = SetTimesOf(handle, times);
    CloseHandle(handle);
    return set;
  }

  std::string WithLineEnds(std::string text) const override { return WithCarriageReturns(text); }

  bool Remove(LPCTSTR path) override { return DeleteFileW(PathOf(path)) != 0; }

  bool Replace(LPCTSTR from, LPCTSTR to) override {
    if (IsReadOnly(PathOf(to))) return false;
    return MoveFileExW(PathOf(from), PathOf(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  }

  bool Rename(LPCTSTR from, LPCTSTR to) override {
    return MoveFileExW(PathOf(from), PathOf(to), MOVEFILE_WRITE_THROUGH) != 0;
  }

  bool IsLink(LPCTSTR path) override {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(PathOf(path), &entry);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
  }

  CString FollowLinks(LPCTSTR path) override;

  bool MakeFolder(LPCTSTR path) override { return CreateDirectoryW(PathOf(path), nullptr) != 0; }

  std::vector<FoundFile> List(LPCTSTR folder, LPCTSTR pattern) override;

  bool CanList(LPCTSTR folder) override {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(AllOf(folder), &entry);
    // The root of a drive may be empty; every other folder holds itself.
    if (search == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_FILE_NOT_FOUND;
    FindClose(search);
    return true;
  }

 private:
  static CString AllOf(LPCTSTR folder) {
    return CString(folder).IsEmpty() ? CString(_T("*")) : CString(folder) + _T("\\*");
  }
};

CString Win32Files::FollowLinks(LPCTSTR path) {
  if (!IsLink(path)) return {path};
  const HANDLE handle =
      CreateFileW(PathOf(path), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return {path};
  std::vector<TCHAR> target(kLongestPath);
  const DWORD length = GetFinalPathNameByHandleW(handle, target.data(), static_cast<DWORD>(target.size()), 0);
  CloseHandle(handle);
  return length > 0 && length < target.size() ? CString(static_cast<LPCTSTR>(target.data())) : CString(path);
}

// The system would also match short names ("A~1.TXT"), so it lists all and the pattern is ours.
std::vector<FoundFile> Win32Files::List(LPCTSTR folder, LPCTSTR pattern) {
  FolderList list(pattern);
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW(AllOf(folder), &entry);
  if (search == INVALID_HANDLE_VALUE) return {};
  do {
    const CString name(static_cast<LPCTSTR>(entry.cFileName));
    if (list.Wants(name)) list.Add(name, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
  } while (FindNextFileW(search, &entry));
  FindClose(search);
  return list.InOrder();
}

}  // namespace

Files& NativeFiles() {
  static Win32Files files;
  return files;
}

}  // namespace lorv
