#include "module/startup.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) return lorv::AttachModule(module);
  if (reason == DLL_PROCESS_DETACH) lorv::DetachModule();
  return TRUE;  // threads that come and go need nothing
}
