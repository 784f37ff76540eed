#pragma once

#include <memory>

#include "tools/lorv/session/line_editor.h"

namespace lorv::tool {

// Lines by the system's editing library, which is loaded only where somebody types; null where it is not
// installed.
std::unique_ptr<LineEditor> TerminalLines();

}  // namespace lorv::tool
