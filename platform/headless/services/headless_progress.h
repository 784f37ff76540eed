#pragma once

#include <memory>

#include "platform/ports/progress_dialog.h"

namespace lorv {

// A progress dialog in windows of the desktop in force, for hosts that see the windows of a desktop in
// memory: two lines, a bar, the time left or the message of cancelling, a button. Of one size whatever it
// says.
//
// It neither takes the focus nor closes by itself; Tab leads to its button, and the button, Esc and closing
// it cancel. The time is the desktop's. It dispatches no messages: what the user does is handled when the
// program comes to it.
// Edges: when the window that it belongs to goes, it goes with it, and every call does nothing.
// One thread: that of the user interface.
COMM_LORV_API std::unique_ptr<ProgressDialog> MakeHeadlessProgress();

}  // namespace lorv
