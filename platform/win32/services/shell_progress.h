#pragma once

#include <memory>

#include "platform/ports/progress_dialog.h"

namespace lorv {

// The shell's own progress dialog; null where the shell does not give one. The calling thread must have
// started COM.
std::unique_ptr<ProgressDialog> MakeShellProgress();

}  // namespace lorv
