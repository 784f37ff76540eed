#include "spreadsheet/servers/office/office_library.h"

#include <dlfcn.h>

#include "framework/text/utf8.h"

// The module stands beside this library; it needs the office's own libraries, so it is loaded where an office
// is wanted, and a machine without one runs everything else.

namespace lorv::office {
namespace {

constexpr const char* kName = LORV_OFFICE_MODULE;
constexpr const char* kEntry = "LorvStartOffice";

[[noreturn]] void Refuse(const std::string& reason) {
  throw OfficeFault{true, Utf8ToText(reason)};
}

std::string PlaceOfModule() {
  Dl_info facts{};
  const bool known = dladdr(&kName, &facts) != 0 && facts.dli_fname != nullptr;
  const std::string own = known ? facts.dli_fname : "";
  return own.substr(0, own.rfind('/') + 1) + kName;
}

LorvOfficeStarter* Starter() {
  const std::string place = PlaceOfModule();
  void* library = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) library = dlopen(kName, RTLD_NOW | RTLD_LOCAL);
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
