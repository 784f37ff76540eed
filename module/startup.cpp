#include "module/startup.h"

#include <algorithm>
#include <new>

// The module's handle and the list of modules whose resources are searched, the newest first. The loader
// calls this before and after everything else, so nothing here may rest on other statics.

namespace lorv {
namespace {

HINSTANCE own_module = nullptr;

// Never destroyed: the loader may detach the module after the destructors of statics have run.
std::vector<HINSTANCE>& Modules() {
  static auto* const modules = new std::vector<HINSTANCE>;
  return *modules;
}

}  // namespace

int AttachModule(HINSTANCE module) {
  try {
    Modules().insert(Modules().begin(), module);
  } catch (const std::bad_alloc&) {
    return 0;
  }
  own_module = module;
  return 1;
}

void DetachModule() {
  auto& modules = Modules();
  modules.erase(std::remove(modules.begin(), modules.end(), own_module), modules.end());
  own_module = nullptr;
}

HINSTANCE OwnModule() {
  return own_module;
}

std::vector<HINSTANCE> ResourceModules() {
  return Modules();
}

}  // namespace lorv
