#include <dlfcn.h>

#include "module/startup.h"

// Enters the module when the library is loaded and takes it out at its end, where the system has no entry
// point for that.

namespace {

// The address at which the file that holds this code is loaded: what stands for a module's handle here.
HINSTANCE LoadedAt() {
  Dl_info facts{};
  return dladdr(reinterpret_cast<const void*>(&LoadedAt), &facts) == 0 ? nullptr : facts.dli_fbase;
}

[[gnu::constructor]] void Attach() {
  lorv::AttachModule(LoadedAt());
}

[[gnu::destructor]] void Detach() {
  lorv::DetachModule();
}

}  // namespace
