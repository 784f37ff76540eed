#include "tools/lorv/formula/circle_number.h"

#include <algorithm>

// Finds PI in a formula, for the warning that a column or value of that name is never asked for.

namespace lorv::tool {
namespace {

constexpr int kLength = 2;

// With any other letters behind it the word is a name like others, and is found as one.
CString WithOtherName(const CString& formula, int at) {
  return formula.Left(at) + _T("__") + formula.Mid(at + kLength);
}

}  // namespace

// The list of names knows quotes and the edges of words, and leaves PI out: it stands where a name of the
// same length would be one.
std::optional<FormulaWord> CircleNumberIn(const CString& formula) {
  const CString capitals = NameKey(formula.View());
  for (int at = capitals.Find(_T("PI")); at >= 0; at = capitals.Find(_T("PI"), at + 1)) {
    const std::vector<FormulaWord> names = NamesOf(WithOtherName(formula, at).View());
    const bool is_word = std::any_of(names.begin(), names.end(), [at](const FormulaWord& name) {
      return name.position == at && name.length == kLength;
    });
    if (is_word) return FormulaWord{at, kLength, formula.Mid(at, kLength)};
  }
  return std::nullopt;
}

}  // namespace lorv::tool
