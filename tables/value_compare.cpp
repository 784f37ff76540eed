#include "tables/value_compare.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "framework/text/char_class.h"

// Comparison of a cell with a value sought, by their texts. Searching a long column must not make a text of
// every cell: numbers of the usual kinds are printed into a small buffer, texts are compared where they lie,
// and clearly different doubles are not printed at all.

namespace lorv {
namespace {

// Two doubles with the same 15 digits differ by one in the last of them at most, which is 1e-14 of the
// smaller for the least favourable digits; twice that leaves room for the rounding here.
bool HaveDifferentTexts(double a, double b) {
  return std::isfinite(a) && std::isfinite(b) &&
         std::fabs(a - b) > 2e-14 * std::min(std::fabs(a), std::fabs(b));
}

int ComparedWithoutCase(TextView a, TextView b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int order = static_cast<int>(ToUpper(a[i])) - static_cast<int>(ToUpper(b[i]));
    if (order != 0) return order;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool IsTrue(long comparison, int order) {
  switch (comparison) {
    // The numbers are the interface's: equal, greater, not less, less, not greater, and 6 for unequal.
    case 1:
      return order == 0;
    case 2:
      return order > 0;
    case 3:
      return order >= 0;
    case 4:
      return order < 0;
    case 5:
      return order <= 0;
    default:
      return order != 0;
  }
}

}  // namespace

CellText::CellText(const VARIANT& value) {
  char digits[24];
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR:
      return;
    case VT_BSTR:
      // Lives as long as the caller's value, which outlives the comparison.
      view_ = TextView(value.bstrVal, SysStringLen(value.bstrVal));
      return;
    case VT_I4:
      PutNarrow(digits, std::to_chars(digits, digits + sizeof digits, value.lVal).ptr);
      return;
    case VT_I2:
    case VT_BOOL:
      PutNarrow(digits, std::to_chars(digits, digits + sizeof digits, value.iVal).ptr);
      return;
    default:
      kept_ = VariantToText(value);
      view_ = kept_.View();
  }
}

void CellText::PutNarrow(const char* first, const char* last) {
  const auto end = std::copy(first, last, units_);
  view_ = TextView(units_, static_cast<std::size_t>(end - units_));
}

bool CompareValues(long comparison, bool exact_case, const VARIANT& value, const VARIANT& cell) {
  // Nothing is converted: 5 as text is not found by 5 as number, and "unequal" does not hold either.
  if (cell.vt != value.vt || comparison < 1 || comparison > 6) return false;
  // A text of a double is dear; equality of clearly different ones is decided without it.
  if (cell.vt == VT_R8 && (comparison == 1 || comparison == 6) &&
      HaveDifferentTexts(value.dblVal, cell.dblVal)) {
    return comparison == 6;
  }
  const CellText left(value);
  const CellText right(cell);
  return IsTrue(comparison, exact_case ? CompareExact(left.View(), right.View())
                                       : ComparedWithoutCase(left.View(), right.View()));
}

// From behind: texts of a column often begin alike and differ in the number at their end.
bool SoughtText::IsSame(TextView text) const {
  for (std::size_t at = text.size(); at-- > 0;) {
    if (text[at] == text_[at]) continue;
    if (exact_case_ || ToUpper(text[at]) != ToUpper(text_[at])) return false;
  }
  return true;
}

}  // namespace lorv
