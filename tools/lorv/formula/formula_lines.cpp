#include "tools/lorv/formula/formula_lines.h"

#include <algorithm>
#include <istream>

// One formula or a file of them, for the verbs that take formulas. The loop is here so that all of them count
// lines, skip remarks and end with the worst code alike.

namespace lorv::tool {

namespace {

using FormulaWork = std::function<int(const std::string& formula, long long line)>;

int ForEachLine(Console& console, const FormulaWork& work) {
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

}  // namespace

int ForEachFormula(const FormulaSource& source, Console& console, const FormulaWork& work) {
  const bool many = source.formula == "-";
  // As many texts of JSON as there are formulas would be no JSON: they are one list.
  if (many && source.json != nullptr) source.json->Open('[');
  const int code = many ? ForEachLine(console, work) : work(source.formula, 0);
  if (many && source.json != nullptr) source.json->Close(']');
  if (source.json != nullptr) console.out << source.json->Text();
  return code;
}

}  // namespace lorv::tool
