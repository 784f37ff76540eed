#include "tools/lorv/text/nearest_word.h"

#include <algorithm>

#include "TEXPRESSCAL/express.h"

// Finds the word that was nearly typed, for verbs and options, by the rules that names in formulas have: a
// user meets one idea of what is near.

namespace lorv::tool {

// The library's guess for a mistyped name, which knows names of functions as well: those are not asked for
// here.
std::string NearestWord(const std::string& typed, const std::vector<std::string>& words) {
  TDefsetVars known;
  for (const std::string& word : words) known.AddSorted(CStrCmp(CString::FromUtf8(word)));
  const CString guess = DiagnoseFormula(CString::FromUtf8(typed), {}, known).suggestion;
  const auto found = std::find_if(words.begin(), words.end(), [&](const std::string& word) {
    return CString::FromUtf8(word).CompareNoCase(guess) == 0;
  });
  return found == words.end() ? std::string() : *found;
}

}  // namespace lorv::tool
