#include <dlfcn.h>

#include "module/startup.h"

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
