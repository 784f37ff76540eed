#include "platform/ports/desktop_services.h"

#include "framework/ports/desktop_port.h"

namespace lorv {

DesktopServices* ServicesOfDesktop() {
  return dynamic_cast<DesktopServices*>(DesktopIfAny());
}

}  // namespace lorv
