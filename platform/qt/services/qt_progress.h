#pragma once

#include <cstdint>
#include <memory>

#include "platform/ports/progress_dialog.h"

namespace lorv {

class QtMailbox;

// A progress dialog in a window of its own: two lines, a bar, the time left or the message of cancelling, a
// button. It neither takes the focus nor closes by itself.
//
// While a long operation runs nobody works the queue. So the dialog works the events itself, some times a
//   second, for its own sake only: what the user does to other windows meanwhile is dropped, and messages and
//   timers of ours wait until it is done. So no handler runs in the middle of the operation.
// Threads: that of the windows.
std::unique_ptr<ProgressDialog> MakeQtProgress(std::shared_ptr<QtMailbox> mailbox);

// What is said of the time left when `milliseconds` have been used for `position` of `total`; empty in the
// first second, before the first step and behind the last one.
//
//   (30000, 1, 3) gives "大约还需 60 秒"
COMM_LORV_API CString TimeLeftText(std::int64_t milliseconds, DWORD position, DWORD total);

}  // namespace lorv
