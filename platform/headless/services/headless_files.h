#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/ports/clock.h"
#include "platform/ports/files.h"

namespace lorv {

// Files in memory. The folders "C:" and "D:" stand from the start, and so does the working folder "".
//
// Letter case counts in paths. Reading and writing an open file goes to the file itself, even after its
// name has gone to another.
class COMM_LORV_API HeadlessFiles : public Files {
 public:
  // Times of files come from the clock, which must live as long as the files.
  explicit HeadlessFiles(Clock& clock);

  // ---- For a test to set up and look at ----

  // Puts a file there, and the folders above it.
  void Put(const CString& path, const std::string& bytes, DWORD attributes = kAttributeNormal);
  // The bytes of a file; a mark that no file holds if it is not there.
  std::string BytesOf(const CString& path) const;
  // Every Open, Remove, Replace and MakeFolder of a path in here fails, with cause 5 (access denied).
  std::set<CString> refused;
  // How many bytes all writes together may still take; a disk that fills up.
  std::int64_t room_left = INT64_MAX;
  // Paths of pipes and devices: neither files nor folders, though they can be opened.
  std::set<CString> streams;
  // Folders whose names cannot be read.
  std::set<CString> unreadable;
  // What was asked, in order: "open read C:\a.txt", "remove C:\a.txt", "replace C:\b by C:\a" ...
  std::vector<CString> asked;

  std::unique_ptr<File> Open(LPCTSTR path, FileUse use, FileError* error) override;
  std::optional<FileFacts> Facts(LPCTSTR path) override;
  bool SetAttributes(LPCTSTR path, DWORD attributes) override;
  bool SetTimes(LPCTSTR path, const FileTimes& times) override;
  bool Remove(LPCTSTR path) override;
  bool Replace(LPCTSTR from, LPCTSTR to) override;
  bool Rename(LPCTSTR from, LPCTSTR to) override;
  bool SyncFolder(LPCTSTR folder) override;
  bool MakeFolder(LPCTSTR path) override;
  std::vector<FoundFile> List(LPCTSTR folder, LPCTSTR pattern) override;
  bool CanList(LPCTSTR folder) override;

 private:
  struct Entry {
    std::string bytes;
    FileFacts facts;
  };
  using EntryPointer = std::shared_ptr<Entry>;
  class OpenFile;

  EntryPointer Find(const CString& path) const;
  EntryPointer Make(const CString& path, DWORD attributes);
  int CauseAgainst(const CString& path, FileUse use) const;
  bool IsFolder(const CString& path) const;
  bool IsReadOnly(const CString& path) const;

  Clock& clock_;
  std::map<CString, EntryPointer> entries_;
};

}  // namespace lorv
