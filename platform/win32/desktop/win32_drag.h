#pragma once

#include "framework/ports/drop_port.h"

// The system's drag and drop. One thread: that of the user interface.
namespace lorv {

// The window gets drops, reported to the receiver that is mapped to it, or gets no more. False: the system
// refused.
bool RegisterDrops(HWND window, bool on);

// Runs the system's loop until the user lets the mouse button go; what the receiver did.
DROPEFFECT RunNativeDrag(const TransferData& content, DROPEFFECT allowed);

// The object that the system asks about drops on that window; one reference, the caller's.
IDropTarget* MakeDropTarget(HWND window);

}  // namespace lorv
