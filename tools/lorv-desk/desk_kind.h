#pragma once

#include "platform/choice/desktop_choice.h"

namespace lorv::tool {

// The desktop with windows that people of this system see; gets the thread ready for it.
DesktopKind ScreenDesktop();

}  // namespace lorv::tool
