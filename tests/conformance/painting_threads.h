#pragma once

#include <functional>

#include "framework/ports/desktop_port.h"

namespace lorv_test {

// A second thread paints a window of the desktop in force and posts to it while the first one paints, resizes
// and destroys it. `disturb` is what else the first one does, a round each.
void PaintFromTwoThreads(lorv::Desktop& desktop, const std::function<void(HWND window, int round)>& disturb);

}  // namespace lorv_test
