#pragma once

#include "framework/ports/menu_model.h"

namespace lorv {

// Shows the menu by the system's own means until a choice is made; the command, 0 for none. A null owner is
// answered for by a window out of sight. One thread: that of the user interface.
UINT TrackNativeMenu(const MenuModel& menu, POINT screen, UINT flags, HWND owner);

}  // namespace lorv
