#pragma once

#include <memory>

#include "framework/ports/window_port.h"

namespace lorv {

// The answer for a handle that names nothing: a window that does nothing. Any thread.
std::shared_ptr<WindowPeer> NoWindow();

// A canvas of no size: draws nothing, measures everything as 0.
std::unique_ptr<Canvas> NoCanvas();

}  // namespace lorv
