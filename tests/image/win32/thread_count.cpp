#include "tests/image/thread_count.h"

#include "framework/native/native_types.h"
// Behind the system's own header.
#include <tlhelp32.h>

namespace lorv::test {

std::size_t CountThreads() {
  const HANDLE shot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof(entry);
  std::size_t count = 0;
  for (BOOL more = Thread32First(shot, &entry); more != FALSE; more = Thread32Next(shot, &entry))
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  CloseHandle(shot);
  return count;
}

}  // namespace lorv::test
