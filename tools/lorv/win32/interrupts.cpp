#include "tools/lorv/files/interrupts.h"

#include "framework/native/native_types.h"

namespace lorv::tool {

struct NativeName {
  CString path;
};

namespace {

void (*remove_all)() = nullptr;

// Runs on a thread of its own; the next handler then ends the program.
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
