#include "module/startup.h"

// The library's entry point on Windows. It runs under the loader's lock, so it does nothing but keep the
// handle.

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) return lorv::AttachModule(module);
  if (reason == DLL_PROCESS_DETACH) lorv::DetachModule();
  return TRUE;  // threads that come and go need nothing
}
