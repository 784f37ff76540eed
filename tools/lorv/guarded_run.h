#pragma once

#include <functional>
#include <string>

#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// Runs a program's work. Whatever leaves it ends as a message on `console.err` behind the program's name,
// with the exit code for bad input; so does output that could not be written.
int GuardedRun(const std::string& program, Console& console, const std::function<int()>& work);

}  // namespace lorv::tool
