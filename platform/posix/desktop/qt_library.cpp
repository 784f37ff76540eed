#include "platform/posix/desktop/qt_library.h"

#include <dlfcn.h>

#include "platform/choice/desktop_choice.h"

// Loads the library of Qt's windows at run time, so that programs without windows need no Qt. It is looked
// for beside this library first, as a program was tested with the one that it was shipped with.

namespace lorv {
namespace {

constexpr const char* kName = LORV_QT_LIBRARY;
constexpr const char* kEntry = "LorvNewQtDesktop";

std::string LastFault() {
  const char* const fault = dlerror();
  return fault == nullptr ? std::string() : std::string(fault);
}

[[noreturn]] void Refuse(LPCTSTR reason, const std::string& detail) {
  throw new DesktopFailure(reason + CString::FromUtf8(detail));
}

}  // namespace

std::vector<std::string> PlacesOfQtLibrary() {
  Dl_info facts{};
  // Any address inside will do: the system names the file that it was loaded from.
  const bool known = dladdr(&kName, &facts) != 0 && facts.dli_fname != nullptr;
  const std::string own = known ? facts.dli_fname : "";
  return {own.substr(0, own.rfind('/') + 1) + kName, kName};
}

std::unique_ptr<Desktop> DesktopOfLibrary(const std::vector<std::string>& places) {
  std::string faults;
  for (const std::string& place : places) {
    void* const library = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
      faults += (faults.empty() ? "" : "; ") + LastFault();
      continue;
    }
    using Entry = Desktop* (*)();
    const auto make = reinterpret_cast<Entry>(dlsym(library, kEntry));
    // A file of that name that is something else: looking further would hide it.
    if (make == nullptr) Refuse(_T("这不是 Qt 桌面库："), place);
    // The library is never unloaded, as windows may be left at the end of the process.
    std::unique_ptr<Desktop> desktop(make());
    if (desktop == nullptr) Refuse(_T("没有可供 Qt 使用的屏幕。"), {});
    return desktop;
  }
  Refuse(_T("无法加载 Qt 桌面库："), faults);
}

}  // namespace lorv
