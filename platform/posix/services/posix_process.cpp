#include <dlfcn.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <fstream>
#include <memory>
#include <string>

#include "framework/text/utf8.h"
#include "platform/ports/process.h"
#include "platform/posix/services/native_path.h"

// What the process knows of itself. A module's handle is any address inside it; version blocks do not exist
// here, which the report allows for.

namespace lorv {
namespace {

std::string ProgramPath() {
  std::string path(PATH_MAX, '\0');
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  path.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  return path;
}

std::string LibraryPath(const void* inside) {
  Dl_info facts{};
  if (dladdr(inside, &facts) == 0 || facts.dli_fname == nullptr) return {};
  return facts.dli_fname;
}

std::uint64_t FreePages() {
  const long pages = sysconf(_SC_AVPHYS_PAGES);
  const long size = sysconf(_SC_PAGESIZE);
  return pages < 0 || size < 0 ? 0 : static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size);
}

std::int64_t UnitsOf(const timeval& time) {
  constexpr std::int64_t kUnitsPerSecond = 10'000'000;
  constexpr std::int64_t kUnitsPerMicrosecond = 10;
  return time.tv_sec * kUnitsPerSecond + time.tv_usec * kUnitsPerMicrosecond;
}

struct CloseLibrary {
  void operator()(void* library) const { dlclose(library); }
};
using Library = std::unique_ptr<void, CloseLibrary>;

// A library that is loaded already, by its bare name or by the name that the system's linker would give it.
Library LoadedLibrary(const std::string& name) {
  // Never loads one: only a module that the program has loaded itself is asked.
  Library library(dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD));
  if (!library) library.reset(dlopen(("lib" + name + ".so").c_str(), RTLD_LAZY | RTLD_NOLOAD));
  return library;
}

class PosixProcess : public Process {
 public:
  CString ModulePath(HINSTANCE module, int limit) override {
    const CString path = CString::FromUtf8(module == nullptr ? ProgramPath() : LibraryPath(module));
    return path.Left(limit - 1);
  }

  std::optional<CString> VersionText(LPCTSTR /*path*/, LPCTSTR /*block*/) override { return std::nullopt; }

  // Memory that the system would free at once counts as free, as it does on Windows.
  std::uint64_t FreePhysicalMemory() override {
    std::ifstream facts("/proc/meminfo");
    std::string name;
    std::uint64_t kilobytes = 0;
    while (facts >> name >> kilobytes) {
      if (name == "MemAvailable:") return kilobytes * 1024;
      facts.ignore(PATH_MAX, '\n');
    }
    return FreePages();
  }

  bool CallLoadedModule(LPCTSTR module, int ordinal, void* record) override {
    const Library library = LoadedLibrary(NativePath(module));
    if (!library) return false;
    // Libraries here have no entries by number: the number is part of the name.
    const std::string entry = "Ordinal" + std::to_string(ordinal);
    using Entry = void (*)(void*);
    const auto call = reinterpret_cast<Entry>(dlsym(library.get(), entry.c_str()));
    if (call == nullptr) return false;
    call(record);
    return true;
  }

  ThreadTimes TimesOfThread() override {
    rusage used{};
    if (getrusage(RUSAGE_THREAD, &used) != 0) return {};
    return {UnitsOf(used.ru_stime), UnitsOf(used.ru_utime)};
  }
};

}  // namespace

Process& NativeProcess() {
  static PosixProcess process;
  return process;
}

}  // namespace lorv
