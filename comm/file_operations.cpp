#include "comm/AdLorvComm.h"

#include <algorithm>
#include <cstdint>

#include "platform/ports/platform.h"

// Files and folders for the suite's modules, over the ports: deleting with undo, parts of paths, lists of a
// folder, the processor's time of the thread. Both "\" and "/" part folders on every system, as the library
// makes paths with "\".

namespace {

// As long as the fixed buffer in which the shell's path stands.
constexpr int kRecyclePathLimit = 260;

// The last separator of folders; -1 without one.
int LastSeparator(const CString& path) {
  return std::max(path.ReverseFind('\\'), path.ReverseFind('/'));
}

template <class List>
__int64 FilesOfFolder(const CString& directory, const CString& pattern, List& list, bool lower_case) {
  // The pattern may name folders of its own.
  const CString search = directory + _T("\\") + pattern;
  const int end = LastSeparator(search);
  __int64 count = 0;
  for (lorv::FoundFile& found : lorv::PortsInForce().files->List(search.Left(end + 1), search.Mid(end + 1))) {
    if (found.is_folder) continue;
    if (lower_case) found.name.MakeLower();
    list.Add(found.name);
    ++count;
  }
  return count;
}

}  // namespace

int RecycleFile(const CString& path, bool delete_for_good) {
  lorv::FileOperation operation;
  operation.function = lorv::kFileDelete;
  operation.from = path.Left(kRecyclePathLimit);
  operation.flags = lorv::kFileSilent | lorv::kFileNoConfirmation | lorv::kFileNoErrorInterface;
  if (!delete_for_good) operation.flags |= lorv::kFileAllowUndo;
  return lorv::PortsInForce().shell->Operate(operation);
}

CString Splitfilename(LPCTSTR path, CString& directory) {
  const CString whole(path);
  // "C:name" has a drive and no separator.
  const int drive = whole.GetLength() > 1 && whole[1] == ':' ? 2 : 0;
  const int begin = std::max(LastSeparator(whole) + 1, drive);
  const int point = whole.ReverseFind('.');
  directory = whole.Left(begin);
  // A point in a folder's name ends no file name.
  return point >= begin ? whole.Mid(begin, point - begin) : whole.Mid(begin);
}

__int64 CAdLorvComm::GetPathFile(const CString& directory, const CString& pattern, CStringArray& list,
                                 bool lower_case) {
  // The arguments may be elements of the list.
  const CString folder = directory;  // NOLINT(performance-unnecessary-copy-initialization)
  const CString fitting = pattern;   // NOLINT(performance-unnecessary-copy-initialization)
  list.RemoveAll();
  return FilesOfFolder(folder, fitting, list, lower_case);
}

__int64 CAdLorvComm::GetPathFile(const CString& directory, const CString& pattern, TextList& list,
                                 bool lower_case) {
  // The arguments may be elements of the list.
  const CString folder = directory;  // NOLINT(performance-unnecessary-copy-initialization)
  const CString fitting = pattern;   // NOLINT(performance-unnecessary-copy-initialization)
  list.clear();
  return FilesOfFolder(folder, fitting, list, lower_case);
}

void CAdLorvComm::GetThreadKernalAndUserTimes(__int64& kernel, __int64& user) {
  const lorv::ThreadTimes times = lorv::PortsInForce().process->TimesOfThread();
  kernel = times.kernel;
  user = times.user;
}

__int64 CAdLorvComm::TransfomNsToMs(__int64 first_kernel, __int64 first_user, __int64 second_kernel,
                                    __int64 second_user, int& kernel, int& user) {
  constexpr __int64 kPerMillisecond = 10000;
  // Through unsigned numbers: times come from callers, and a difference that overflows must not be undefined.
  const auto difference = [](__int64 from, __int64 to) {
    return static_cast<__int64>(static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from));
  };
  kernel = static_cast<int>(difference(first_kernel, second_kernel) / kPerMillisecond);
  user = static_cast<int>(difference(first_user, second_user) / kPerMillisecond);
  return static_cast<__int64>(kernel) + user;
}
