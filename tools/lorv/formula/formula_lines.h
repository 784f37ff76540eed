#pragma once

#include <functional>
#include <string>

#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// Does the work for one formula, or for each line of standard input where the formula is "-": blank
// lines and those that begin with "#" are passed over. The worst exit code of all. `line` is 0 for a
// formula of the command line.
int ForEachFormula(const std::string& formula, Console& console,
                   const std::function<int(const std::string& formula, long long line)>& work);

}  // namespace lorv::tool
