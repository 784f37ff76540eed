#include "tools/lorv/formula/formula_lines.h"

#include <algorithm>
#include <istream>

// One formula or a file of them, for the verbs that take formulas. The loop is here so that all of them count
// lines, skip remarks and end with the worst code alike.

namespace lorv::tool {

int ForEachFormula(const std::string& formula, Console& console,
                   const std::function<int(const std::string& formula, long long line)>& work) {
  if (formula != "-") return work(formula, 0);
  int worst = kFine;
  long long number = 0;
  for (std::string line; std::getline(console.in, line);) {
    ++number;
    // Files of Windows have a CR in front of the line end.
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    worst = std::max(worst, work(line, number));
  }
  return worst;
}

}  // namespace lorv::tool
