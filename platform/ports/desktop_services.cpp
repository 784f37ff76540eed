#include "platform/ports/desktop_services.h"

#include "framework/ports/desktop_port.h"

// Services that a desktop may offer beside windows; a desktop that has none is no failure.

namespace lorv {

DesktopServices* ServicesOfDesktop() {
  return dynamic_cast<DesktopServices*>(DesktopIfAny());
}

}  // namespace lorv
