#include "tools/lorv-desk/desk_kind.h"

// On Unix the windows are those of Qt, on whichever screen it finds.

namespace lorv::tool {

DesktopKind ScreenDesktop() {
  return DesktopKind::Qt;
}

}  // namespace lorv::tool
