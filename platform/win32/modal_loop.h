#pragma once

#include "framework/window_types.h"

// Dialogs for which the thread waits. One thread: that of the user interface.
namespace lorv {

void RunModalLoop(HWND dialog);
void EndModalLoop(HWND dialog);
// After a window is gone: who waits for it looks again.
void WakeModalLoop();

}  // namespace lorv
