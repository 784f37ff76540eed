#pragma once

#include <memory>

#include "framework/ports/desktop_port.h"

namespace lorv {

// The desktop over the system's own windows. Its thread, that of the user interface, is the one that makes
// it; it has to be in force as long as it lives, as messages may come at any time. One at a time.
//
// Controls, menus and metrics behave as the system's own; what differs is in docs/desktop-differences.md.
std::unique_ptr<Desktop> MakeWin32Desktop();

}  // namespace lorv
