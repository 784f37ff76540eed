#include "framework/native/native_types.h"
#include "platform/ports/shared_library.h"

// Libraries loaded at run time, by the system's loader.

namespace lorv {
namespace {

class LoadedModule : public SharedLibrary {
 public:
  explicit LoadedModule(HMODULE module) : module_(module) {}
  ~LoadedModule() override { FreeLibrary(module_); }
  void* Find(const char* name) const override {
    return reinterpret_cast<void*>(GetProcAddress(module_, name));
  }

 private:
  HMODULE module_;
};

}  // namespace

std::unique_ptr<SharedLibrary> OpenSharedLibrary(std::initializer_list<const char*> names) {
  // The first that is there: versions of one library have different names. They are looked for beside the
  // program and in the system, never in the working folder, where a project of somebody else's may lie.
  for (const char* const name : names)
    if (const HMODULE module = LoadLibraryExA(name, nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS))
      return std::make_unique<LoadedModule>(module);
  return nullptr;
}

}  // namespace lorv
