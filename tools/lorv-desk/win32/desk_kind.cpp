#include "tools/lorv-desk/desk_kind.h"

namespace lorv::tool {

DesktopKind ScreenDesktop() {
  return DesktopKind::Windows;
}

}  // namespace lorv::tool
