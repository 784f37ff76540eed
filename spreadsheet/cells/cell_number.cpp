#include "spreadsheet/cells/cell_number.h"

#include <algorithm>
#include <string>

#include "framework/text/number_text.h"

// Which texts of a table go into a sheet as numbers, and the formats under which they are shown there. The
// rules are narrow on purpose: a code such as "007" that came out as 7 would be lost for good.

namespace lorv {
namespace {

// Neither blanks nor exponents: "1e5" and "12 mm" stay the texts that their users wrote.
bool IsDigitOrPoint(TCHAR c) {
  return IsDigit(c) || c == _T('.');
}

}  // namespace

int IsPlainNumber(LPCTSTR text, __int64& decimals) {
  const TextView view = text == nullptr ? TextView() : TextView(text);
  if (!std::all_of(view.begin(), view.end(), IsDigitOrPoint)) return 0;
  if (view == TextView(_T("0"))) return 1;
  // A leading zero makes a code, unless a point follows it.
  if (view.size() > 1 && view[0] == _T('0') && view[1] != _T('.')) return 0;
  // The empty text gets this far, and is refused here. Of two points the reading stops at the second.
  if (ReadReal(view) == 0.0) return 0;
  const std::size_t point = view.find(_T('.'));
  decimals = point == TextView::npos ? 0 : static_cast<__int64>(view.size() - point - 1);
  return 1;
}

CString FixedNumber(double value, int decimals) {
  const std::string digits = RealToText(value, 'f', std::max(decimals, 0));
  return CString(std::basic_string<TCHAR>(digits.begin(), digits.end()));
}

CString NumberFormat(int decimals) {
  CString format(_T("0"));
  if (decimals < 1) return format;
  // The width of a blank at the end keeps columns of figures off their right border.
  return format + _T(".") + CString(_T('0'), decimals) + _T("_ ");
}

}  // namespace lorv
