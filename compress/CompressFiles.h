#pragma once

#include "containers/ox_array.h"
#include "framework/collections/string_array.h"
#include "framework/native/export.h"
#include "framework/text/cstring.h"

// Called with the file that is being packed.
class COMM_LORV_API CImpProgress {
 public:
  // How many files there are. Packing does not report it; for the host's own use.
  virtual void SetRange(int count) = 0;
  // The index in the list of the file that comes now.
  virtual void SetPos(int index) = 0;
  virtual ~CImpProgress() = default;
};

// Packs files of a project into one ZIP archive, over one that stands there.
//
// Names: an archive "D:\out\proj.zip" stores "C:\p\x.dat" as "proj/x.dat", in a folder of its own name, and
//   nothing of the source's folders; "\" and "/" both separate. An archive path without "\" or without "."
//   gives "x.dat" alone, and so does a source that is a bare name. Equal names make equal entries. Names are
//   stored in the system's narrow code page.
// Edges: a path without "." is PASSED OVER, and a file that could not be added changes nothing in the
//   result: look at lorv::LastZipCreation for that. A file of 2 GB or more is never begun.
// Result: 1; 0, and no archive, for an empty list, and 0 where the archive cannot be created.
// A file that cannot be opened raises CFileException* (the caller deletes it), and so does a pipe or a
//   device, with the cause "invalidFile"; the archive then holds what came before. One thread at a time.
//
//   CompressFiles(_T("D:\\out\\proj.zip"), paths)
COMM_LORV_API int CompressFiles(const CString& archive, const CStringArray& paths);
// `progress` may be null.
COMM_LORV_API int CompressFiles(const CString& archive, const OxArray<CString, OxVector<CString>>& paths,
                                CImpProgress* progress);

// Unpacks an archive. The target directory stands directly in front of each name, so it ends with "\".
//
// Edges: the folders of the entries MUST BE THERE where the directory is absolute; folder entries are made
//   below the working folder. Entries go where their names lead, "..\" included: for archives from elsewhere
//   look at the names first. Files that stand there are replaced; all become normal ones.
// Result: 1, or 0 where the archive cannot be opened or an entry cannot be unpacked, as over a read-only
//   file, which stays; those before it stay unpacked. A failure by exception is reported and gives 1 AS
//   WELL, which callers accept.
// One thread at a time.
//
//   DecompressFiles(_T("D:\\out\\proj.zip"), _T("E:\\t\\"))  writes "E:\t\proj/x.dat"
COMM_LORV_API int DecompressFiles(const CString& archive, const CString& directory);
