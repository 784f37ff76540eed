#pragma once

#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// The calculator that `lorv` is without a verb: each line is a formula, which prints its number, or NAME =
// FORMULA, which keeps it for later lines; `ans` is the number before. `names`, `functions`, `clear`, `help`
// and `quit` are commands. Ends at the end of the input; wrong lines are reported and change nothing.
int RunSession(Console& console);

}  // namespace lorv::tool
