#include <dlfcn.h>

#include "platform/ports/shared_library.h"

// Libraries loaded at run time, by the dynamic linker.

namespace lorv {
namespace {

class LoadedObject : public SharedLibrary {
 public:
  explicit LoadedObject(void* library) : library_(library) {}
  ~LoadedObject() override { dlclose(library_); }
  void* Find(const char* name) const override { return dlsym(library_, name); }

 private:
  void* library_;
};

}  // namespace

std::unique_ptr<SharedLibrary> OpenSharedLibrary(std::initializer_list<const char*> names) {
  for (const char* const name : names)
    // Local, so that its names do not answer for those of libraries that are loaded later.
    if (void* const library = dlopen(name, RTLD_LAZY | RTLD_LOCAL))
      return std::make_unique<LoadedObject>(library);
  return nullptr;
}

}  // namespace lorv
