#pragma once

#include <string>
#include <vector>

#include "TEXPRESSCAL/express.h"

namespace lorv::tool {

// One NAME=VALUE of the command line.
struct NameValue {
  CString name;  // as typed
  bool is_text;  // the value stood in single quotes
  CString text;  // with its quotes
  double number;
};

// Reads NAME=VALUE arguments. Throws BadInput for what is no such pair, for a name given twice (letter case
// aside), and for a value that is neither a number nor a text in single quotes.
std::vector<NameValue> ReadNameValues(const std::vector<std::string>& words);

// Cuts a word at its first "="; throws BadInput, naming what was expected, where there is none.
std::pair<std::string, std::string> CutAtEqualSign(const std::string& word, const char* expected);

}  // namespace lorv::tool
