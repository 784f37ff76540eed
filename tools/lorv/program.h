#pragma once

#include <string>
#include <vector>

#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// The whole program: reads `words` (the arguments behind the program's name, UTF-8), runs the verb and gives
// the exit code. Whatever goes wrong ends as a message on `console.err`, never as an exception.
int RunProgram(const std::vector<std::string>& words, Console& console);

}  // namespace lorv::tool
