#include "tools/lorv/files/interrupts.h"

#include "framework/native/native_types.h"

// Ends of the program on Windows: Ctrl+C, a closed console, the end of the session. The system calls handlers
// on a thread of its own, so all that is said of signal handlers holds here, too.

namespace lorv::tool {

struct NativeName {
  CString path;
};

namespace {

void (*remove_all)() = nullptr;

// Runs on a thread of its own. It says that nothing was done, so that the next handler, the
// system's, ends the program.
BOOL WINAPI End(DWORD /*event*/) {
  remove_all();
  return FALSE;
}

}  // namespace

NativeName* MakeNativeName(const CString& path) {
  return new NativeName{path};
}

void FreeNativeName(NativeName* name) {
  delete name;
}

void RemoveNativeFile(const NativeName& name) {
  DeleteFileW(name.path);
}

void CallBeforeTheEnd(void (*remove)()) {
  remove_all = remove;
  SetConsoleCtrlHandler(End, TRUE);
}

}  // namespace lorv::tool
