#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// Files and folders.
//
// Paths: "\" and "/" both separate folders, on every system. A relative path starts at the working folder.
// Times: counts of 100 nanoseconds since 1601 in universal time; 0 where a time is not known.
// Attributes: the bits of Windows. Elsewhere a file is read-only (0x1) without write permission, hidden
//   (0x2) by a leading point, and archive (0x20) or normal (0x80) count for nothing. A read-only file is
//   neither removed nor replaced nor opened for writing, on any system and by any user.
// Result: no operation throws but for lack of memory. Any thread; one File belongs to one thread at a time.
namespace lorv {

constexpr DWORD kAttributeReadOnly = 0x01;
constexpr DWORD kAttributeHidden = 0x02;
constexpr DWORD kAttributeSystem = 0x04;
constexpr DWORD kAttributeFolder = 0x10;
constexpr DWORD kAttributeArchive = 0x20;
constexpr DWORD kAttributeNormal = 0x80;

struct FileTimes {
  std::int64_t access = 0;
  std::int64_t creation = 0;
  std::int64_t write = 0;
};

struct FileFacts {
  DWORD attributes = 0;
  std::uint64_t size = 0;
  FileTimes times;
  bool is_stream = false;  // neither file nor folder: a pipe or a device, which may keep a reader waiting
  bool IsFolder() const { return (attributes & kAttributeFolder) != 0; }
};

struct FoundFile {
  CString name;  // without its folder
  bool is_folder = false;
};

// Why a file did not open: a cause of CFileException and the system's own number.
struct FileError {
  int cause = 0;
  LONG system = 0;
};

enum class FileUse {
  kRead,       // must exist
  kCreate,     // for writing; what it held is gone
  kAppend,     // for writing at its end; made when missing
  kCreateNew,  // for writing; only where nothing stands yet, not even a link
  kStream,     // for writing to a pipe or device that stands there; never made
};

// An open file; closed by the destructor.
class COMM_LORV_API File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  virtual ~File() = default;

  // The bytes read: fewer than asked for at the end of the file, -1 for a failure.
  virtual std::int64_t Read(void* out, std::size_t size) = 0;
  // Whether all bytes were written.
  virtual bool Write(const void* bytes, std::size_t size) = 0;
  // Goes to a position from the start.
  virtual bool Seek(std::uint64_t position) = 0;
  // -1 where it is not known.
  virtual std::int64_t Size() = 0;
  // Hands over to the system what is still held back; false when that failed at any time before.
  virtual bool Flush() = 0;
  // Flush, and waits until the disk has what was written, so that it outlives a loss of power. What has no
  // disk behind it has nothing to wait for.
  virtual bool Sync() { return Flush(); }
  // Sets the times of the file as Files::SetTimes does; later writes change them again.
  virtual bool SetTimes(const FileTimes& /*times*/) { return false; }
};

class COMM_LORV_API Files {
 public:
  Files() = default;
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  virtual ~Files() = default;

  // Null when it fails; `error`, if given, then says why, and is untouched otherwise. A folder never opens.
  virtual std::unique_ptr<File> Open(LPCTSTR path, FileUse use, FileError* error = nullptr) = 0;
  // Nothing where no file or folder stands.
  virtual std::optional<FileFacts> Facts(LPCTSTR path) = 0;
  virtual bool SetAttributes(LPCTSTR path, DWORD attributes) = 0;
  // A time of 0 stays as it is. A creation time is kept only where the system has one to set.
  virtual bool SetTimes(LPCTSTR path, const FileTimes& times) = 0;
  // Bytes of a text as a file in text mode holds them: a line feed alone, or after a carriage return on
  // systems that want both.
  virtual std::string WithLineEnds(std::string text) const { return text; }
  // Whether the path itself is a symbolic link, wherever that leads. All else here follows links, but Remove,
  // Replace and Rename take the link itself.
  virtual bool IsLink(LPCTSTR /*path*/) { return false; }
  // Where a link leads at last, whether or not anything stands there; `path` for what is no link, and for a
  // link that leads in a circle.
  virtual CString FollowLinks(LPCTSTR path) { return {path}; }
  // Removes a file, never a folder.
  virtual bool Remove(LPCTSTR path) = 0;
  // Gives a file another name at once; a file that stands there is replaced, whole or not at all.
  virtual bool Replace(LPCTSTR from, LPCTSTR to) = 0;
  // Gives a file another name at once, but only where nothing stands.
  virtual bool Rename(LPCTSTR from, LPCTSTR to) = 0;
  // Gives a file the rights of another one, and its owner where that may be done.
  virtual bool CopyRights(LPCTSTR /*from*/, LPCTSTR /*to*/) { return true; }
  // Waits until the disk has the names that stand in a folder.
  virtual bool SyncFolder(LPCTSTR /*folder*/) { return true; }
  // Waits until the disk has everything written so far on the file system of a folder: one call for many
  // files. False also where the system has no such call; then each file is for itself to be synced.
  virtual bool SyncAll(LPCTSTR /*folder*/) { return false; }
  // One level: false when the parent is missing or something stands there.
  virtual bool MakeFolder(LPCTSTR path) = 0;
  // What stands in a folder and fits a pattern of "*" and "?" (letter case does not count; "*.*" fits
  // every name), in the order of names. "." and ".." are never among it. Empty for a missing folder.
  virtual std::vector<FoundFile> List(LPCTSTR folder, LPCTSTR pattern) = 0;
  // Whether the names in a folder can be read.
  virtual bool CanList(LPCTSTR folder) = 0;

  // ---- Made of the above ----

  bool Exists(LPCTSTR path) { return Facts(path).has_value(); }
  // The whole file; nothing when it does not open or a read fails.
  std::optional<std::string> ReadAll(LPCTSTR path);
  // Makes or replaces a file, by an unfinished file beside it that is on the disk before it takes the name: a
  // reader sees the old file or the new one, and a failure leaves the old one.
  bool WriteWhole(LPCTSTR path, std::string_view bytes);
};

// The path of an unfinished file in the folder of `path`: ".lorv-", 16 letters by chance, ".part". Short, so
// that it fits where the longest name does, and made anew with every call.
COMM_LORV_API CString UnfinishedPath(LPCTSTR path);
// Whether a name without its folder is such a one: left behind by a program that was ended by force.
COMM_LORV_API bool IsUnfinishedName(TextView name);
// The folder that a path stands in, with its separator; empty for a bare name, the working folder.
COMM_LORV_API CString FolderOfPath(LPCTSTR path);

// The system's files.
COMM_LORV_API Files& NativeFiles();

// Every line feed after a carriage return: text mode as Windows has it.
COMM_LORV_API std::string WithCarriageReturns(std::string_view text);

// Whether a name fits a pattern as List takes it.
COMM_LORV_API bool FitsPattern(TextView name, TextView pattern);

}  // namespace lorv
