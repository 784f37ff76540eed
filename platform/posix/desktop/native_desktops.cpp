#include "platform/choice/native_desktops.h"

#include <string>

#include "platform/headless/desktop/headless_desktop.h"
#include "platform/posix/desktop/qt_library.h"
#include "platform/posix/services/user_folders.h"

// The desktops that this system can offer: in memory, or Qt's from a library of its own. A wrong word in the
// environment is refused instead of replaced: no user would see windows in memory.

namespace lorv {

DesktopKind UsualDesktop() {
  const std::string word = EnvironmentValue("COMM_LORV_DESKTOP");
  if (word.empty() || word == "headless") return DesktopKind::Headless;
  if (word == "qt") return DesktopKind::Qt;
  CString reason;
  reason.Format(_T("COMM_LORV_DESKTOP 不能是“%s”：只有 headless 和 qt。"), CString::FromUtf8(word));
  throw new DesktopFailure(reason);
}

std::unique_ptr<Desktop> MakeDesktop(DesktopKind kind) {
  if (kind == DesktopKind::Headless) return std::make_unique<HeadlessDesktop>();
  if (kind == DesktopKind::Qt) return DesktopOfLibrary(PlacesOfQtLibrary());
  throw new DesktopFailure(_T("此系统没有 Windows 的桌面。"));
}

}  // namespace lorv
