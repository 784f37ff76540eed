#include "spreadsheet/cells/cell_text.h"

#include "framework/values/ole_date.h"
#include "spreadsheet/cells/cell_number.h"

// From a value and its number format to the text that the cell's user sees, as far as tables of the suite
// need it. The format is looked through for a few marks and not interpreted: the order of the questions and
// the ways of counting decimals are those by which tables have always been read.

namespace lorv {
namespace {

// Money comes as a whole number of ten-thousandths.
constexpr __int64 kMoneyScale = 10000;

// Of formats with "%".
// All that stands between the point and the sign counts, a "#" as well as a "0".
int PercentDecimals(TextView format) {
  const std::size_t point = format.find(_T('.'));
  if (point == TextView::npos) return 0;
  return static_cast<int>(format.rfind(_T('%'))) - static_cast<int>(point) - 1;
}

// From the last point to the last zero; `format` has a point.
int PlacesToLastZero(TextView format) {
  const std::size_t zero = format.rfind(_T('0'));
  const int last_zero = zero == TextView::npos ? -1 : static_cast<int>(zero);
  return last_zero - static_cast<int>(format.rfind(_T('.')));
}

int MoneyDecimals(TextView format) {
  return format.find(_T('.')) == TextView::npos ? 0 : PlacesToLastZero(format);
}

int PlainDecimals(TextView format) {
  const int places = PlacesToLastZero(format);
  // The last zero directly before the point: the decimals are of another kind, as in "0.##".
  if (places != -1) return places;
  return static_cast<int>(format.size() - format.rfind(_T('.')) - 1);
}

// Two minutes' letters stand together where a time is shown as hours and minutes.
bool IsTimeFormat(TextView format) {
  const std::size_t first = format.find(_T('m'));
  return first != TextView::npos && first + 1 < format.size() && format[first + 1] == _T('m');
}

bool IsWholeFormat(TextView format) {
  return format.size() == 3 && format[0] == _T('0') && format[1] == _T('_');
}

CString GeneralText(double value) {
  CString text;
  text.Format(_T("%.10g"), value);
  return text;
}

CString TimeText(double value) {
  SYSTEMTIME time = {};
  if (!SplitOleDate(value, time)) return GeneralText(value);
  CString text;
  text.Format(_T("%d:%d:%d"), time.wHour, time.wMinute, time.wSecond);
  return text;
}

CString DateText(double date) {
  SYSTEMTIME time = {};
  if (!SplitOleDate(date, time)) return {};
  CString text;
  text.Format(_T("%d-%d-%d"), time.wYear, time.wMonth, time.wDay);
  return text;
}

CString MoneyText(const CY& money, TextView format) {
  // Whole units only: that is what documents of the suite hold.
  const __int64 whole = money.int64 / kMoneyScale;
  return _T("$") + FixedNumber(static_cast<double>(whole), MoneyDecimals(format));
}

CString NumberText(double value, TextView format) {
  // Percent first, whatever else the format holds: "$0.00%" is a percentage.
  if (!format.empty() && format.back() == _T('%')) {
    return FixedNumber(value * 100, PercentDecimals(format)) + _T("%");
  }
  if (format.find_first_of(_T("Y$")) != TextView::npos) {
    return _T("$") + FixedNumber(value, MoneyDecimals(format));
  }
  // Before the point is looked at: times with fractions of a second hold one, too.
  if (IsTimeFormat(format)) return TimeText(value);
  if (format.find(_T('.')) != TextView::npos && format.find(_T('E')) == TextView::npos) {
    return FixedNumber(value, PlainDecimals(format));
  }
  return IsWholeFormat(format) ? FixedNumber(value, 0) : GeneralText(value);
}

}  // namespace

CString SheetCellText(const VARIANT& value, const CString& format) {
  const TextView shown(format.GetString());
  switch (value.vt) {
    case VT_R8:
      return NumberText(value.dblVal, shown);
    case VT_CY:
      return MoneyText(value.cyVal, shown);
    case VT_DATE:
      return DateText(value.date);
    case VT_BSTR:
      return value.bstrVal == nullptr ? CString()
                                      : CString(TextView(value.bstrVal, SysStringLen(value.bstrVal)));
    default:
      // A truth value or an error has no text: a word in its place would be taken for what the user wrote.
      return {};
  }
}

}  // namespace lorv
