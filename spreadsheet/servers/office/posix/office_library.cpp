#include "spreadsheet/servers/office/office_library.h"

#include <dlfcn.h>

#include <filesystem>

#include "framework/text/utf8.h"

// The module stands beside this library, or where libraries are installed beside a program that has this one
// within; it needs the office's own libraries, so it is loaded where an office is wanted, and a machine
// without one runs everything else.

namespace lorv::office {
namespace {

constexpr const char* kName = LORV_OFFICE_MODULE;
constexpr const char* kEntry = "LorvStartOffice";

[[noreturn]] void Refuse(const std::string& reason) {
  throw OfficeFault{true, Utf8ToText(reason)};
}

namespace fs = std::filesystem;

// Of the file that holds this code. A program is known to the loader by the name that it was called by.
fs::path OwnFolder() {
  Dl_info facts{};
  const bool known = dladdr(&kName, &facts) != 0 && facts.dli_fname != nullptr;
  const fs::path own = known ? fs::path(facts.dli_fname) : fs::path();
  std::error_code unknown;
  const fs::path file = own.has_parent_path() ? own : fs::path("/proc/self/exe");
  return fs::canonical(file, unknown).parent_path();
}

// Beside the program's folder ("bin") there is that of libraries.
std::string PlaceOfModule() {
  const fs::path folder = OwnFolder();
  std::error_code unknown;
  for (const fs::path& in : {folder, folder / ".." / LORV_LIBRARY_FOLDER, folder / ".." / "lib"}) {
    if (fs::exists(in / kName, unknown)) return (in / kName).string();
  }
  return kName;
}

LorvOfficeStarter* Starter() {
  const std::string place = PlaceOfModule();
  // By its name alone it is looked for where the system has its libraries.
  void* const library = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* const fault = dlerror();
    Refuse(fault == nullptr ? place : fault);
  }
  auto* const start = reinterpret_cast<LorvOfficeStarter*>(dlsym(library, kEntry));
  if (start == nullptr) Refuse(place + ": no " + kEntry);
  return start;
}

}  // namespace

std::unique_ptr<OfficeBridge> StartOffice(const OfficeStart& start) {
  return std::unique_ptr<OfficeBridge>(Starter()(start));
}

}  // namespace lorv::office
