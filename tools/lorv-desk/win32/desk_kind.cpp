#include "tools/lorv-desk/desk_kind.h"

#include "framework/native/native_types.h"

#include <objbase.h>

// On Windows the windows are the system's own.

namespace lorv::tool {

DesktopKind ScreenDesktop() {
  // The shell's progress dialog is asked for through it. It stays to the end of the program.
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  return DesktopKind::Windows;
}

}  // namespace lorv::tool
