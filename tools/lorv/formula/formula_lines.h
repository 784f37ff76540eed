#pragma once

#include <functional>
#include <string>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

struct FormulaSource {
  const std::string& formula;  // "-": the lines of standard input
  JsonText* json = nullptr;    // that the work is written into; null: it is not wanted as JSON
};

// Does the work for one formula, or for each line of standard input where the formula is "-": blank
// lines and those that begin with "#" are passed over. The worst exit code of all. `line` is 0 for a
// formula of the command line. What the work wrote as JSON is printed at the end, as a list for lines.
int ForEachFormula(const FormulaSource& source, Console& console,
                   const std::function<int(const std::string& formula, long long line)>& work);

}  // namespace lorv::tool
