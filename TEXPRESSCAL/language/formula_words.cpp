#include "TEXPRESSCAL/formula_words.h"

#include <algorithm>
#include <iterator>

#include "TEXPRESSCAL/function_table.h"
#include "framework/text/char_class.h"

// The names in a formula as its author sees them: words of any script, outside quotes, that are neither
// functions nor PI. It reads the text as typed, before anything is replaced; what is a letter beyond ASCII
// goes by the table here and by no locale.

namespace lorv {
namespace {

struct UnitRange {
  unsigned first;
  unsigned last;
};

// Signs beyond ASCII that are no letters: Latin signs, general punctuation, arrows and mathematics, Chinese
// and full-width punctuation.
constexpr UnitRange kSigns[] = {{0x80, 0xA9},     {0xAB, 0xB1},     {0xB4, 0xB4},     {0xB6, 0xB8},
                                {0xBB, 0xBF},     {0xD7, 0xD7},     {0xF7, 0xF7},     {0x2000, 0x206F},
                                {0x2190, 0x2BFF}, {0x3000, 0x3004}, {0x3008, 0x3020}, {0x3030, 0x303F},
                                {0xFE30, 0xFE6F}, {0xFF00, 0xFF0F}, {0xFF1A, 0xFF20}, {0xFF3B, 0xFF3E},
                                {0xFF40, 0xFF40}, {0xFF5B, 0xFF65}, {0xFEFF, 0xFEFF}, {0xFFF0, 0xFFFF}};

bool IsNameUnit(TCHAR c) {
  const auto code = static_cast<unsigned>(c);
  if (code < 0x80) return IsAsciiLetter(c) || IsDigit(c) || c == '_';
  return std::none_of(std::begin(kSigns), std::end(kSigns),
                      [code](const UnitRange& range) { return code >= range.first && code <= range.last; });
}

bool IsReserved(const CString& key, TextView formula, std::size_t begin, std::size_t end) {
  if (key == _T("PI") || Functions().FindKey(key) >= 0) return true;
  // They are operators between blanks only; elsewhere a name may be called so.
  if (key != _T("AND") && key != _T("OR")) return false;
  return begin > 0 && formula[begin - 1] == ' ' && end < formula.size() && formula[end] == ' ';
}

}  // namespace

CString NameKey(TextView name) {
  return CString(name).MakeUpper();
}

bool IsName(TextView text) {
  return !text.empty() && !IsDigit(text[0]) && std::all_of(text.begin(), text.end(), IsNameUnit) &&
         !IsReserved(NameKey(text), {}, 0, 0);
}

std::vector<FormulaWord> NamesOf(TextView formula) {
  std::vector<FormulaWord> names;
  for (std::size_t at = 0; at < formula.size();) {
    const TCHAR c = formula[at];
    if (c == '\'') {
      const std::size_t close = formula.find('\'', at + 1);
      at = close == TextView::npos ? formula.size() : close + 1;
      continue;
    }
    if (IsDigit(c) || !IsNameUnit(c)) {
      ++at;
      continue;
    }
    const std::size_t begin = at;
    while (at < formula.size() && IsNameUnit(formula[at])) ++at;
    const TextView word = formula.substr(begin, at - begin);
    if (IsReserved(NameKey(word), formula, begin, at)) continue;
    names.push_back({static_cast<int>(begin), static_cast<int>(word.size()), CString(word)});
  }
  return names;
}

}  // namespace lorv
