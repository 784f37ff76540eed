#pragma once

#include "framework/native/window_types.h"

// Dialogs for which the thread waits. One thread: that of the user interface.
namespace lorv {

void RunModalLoop(HWND dialog);
void EndModalLoop(HWND dialog);
// Before a dialog goes out of sight: its owner may be activated again. The system activates whatever lies
// below, another program's window too, if the owner is still disabled then.
void FreeModalOwner(HWND dialog);
// After a window is gone: a loop that waits for it looks again.
void WakeModalLoop();

}  // namespace lorv
