#pragma once

#include <memory>

#include "platform/ports/progress_dialog.h"

namespace lorv {

class QtMailbox;

// A progress dialog in a window of its own: two lines, a bar, the time left or the message of cancelling, a
// button. It neither takes the focus nor closes by itself.
//
// While a long operation runs no messages are dispatched. So the dialog handles the events itself, some
//   times a second, for its own sake only: what the user does to other windows meanwhile is dropped, and
//   messages and timers of ours wait until it is done. So no handler runs in the middle of the operation.
// Threads: that of the windows.
std::unique_ptr<ProgressDialog> MakeQtProgress(std::shared_ptr<QtMailbox> mailbox);

}  // namespace lorv
