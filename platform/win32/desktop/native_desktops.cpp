#include "platform/choice/native_desktops.h"

#include "platform/headless/desktop/headless_desktop.h"
#include "platform/win32/desktop/win32_desktop.h"

// The desktops that Windows can offer: the system's own windows, or windows in memory when a program asks for
// them.

namespace lorv {

DesktopKind UsualDesktop() {
  return DesktopKind::Windows;
}

std::unique_ptr<Desktop> MakeDesktop(DesktopKind kind) {
  if (kind == DesktopKind::Headless) return std::make_unique<HeadlessDesktop>();
  if (kind == DesktopKind::Windows) return MakeWin32Desktop();
  throw new DesktopFailure(_T("此系统没有 Qt 的桌面。"));
}

}  // namespace lorv
