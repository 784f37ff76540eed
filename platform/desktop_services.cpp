#include "platform/desktop_services.h"

#include "framework/desktop_port.h"

namespace lorv {

DesktopServices* ServicesOfDesktop() {
  return dynamic_cast<DesktopServices*>(DesktopIfAny());
}

}  // namespace lorv
