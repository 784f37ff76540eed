#include "spreadsheet/cells/cell_text.h"

#include <algorithm>
#include <string_view>

#include "framework/text/number_text.h"
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

void AppendDigits(std::string_view digits, CellFormat::Units& out) {
  // Not by append of two iterators, which makes a text of its own first, on the heap from eight digits on.
  const std::size_t before = out.size();
  out.resize(before + digits.size());
  std::copy(digits.begin(), digits.end(), out.begin() + static_cast<std::ptrdiff_t>(before));
}

void AppendFixed(double value, int decimals, CellFormat::Units& out) {
  char digits[64];
  const int places = std::max(decimals, 0);
  const int length = FixedToText(value, places, digits, sizeof(digits));
  if (length > 0) {
    AppendDigits({digits, static_cast<std::size_t>(length)}, out);
  } else {
    // Hundreds of digits.
    AppendDigits(RealToText(value, 'f', places), out);
  }
}

void AppendGeneral(double value, CellFormat::Units& out) {
  constexpr int kDigits = 10;
  AppendDigits(RealToText(value, 'g', kDigits), out);
}

// Three parts as they are, without padding.
void AppendParts(int first, int second, int third, TCHAR mark, CellFormat::Units& out) {
  AppendDigits(std::to_string(first), out);
  out += mark;
  AppendDigits(std::to_string(second), out);
  out += mark;
  AppendDigits(std::to_string(third), out);
}

void AppendTime(double value, CellFormat::Units& out) {
  SYSTEMTIME time = {};
  if (!SplitOleDate(value, time)) return AppendGeneral(value, out);
  AppendParts(time.wHour, time.wMinute, time.wSecond, _T(':'), out);
}

CString MoneyText(const CY& money, TextView format) {
  // Whole units only: that is what documents of the suite hold.
  const __int64 whole = money.int64 / kMoneyScale;
  return _T("$") + FixedNumber(static_cast<double>(whole), MoneyDecimals(format));
}

}  // namespace

CellFormat::CellFormat(TextView format) {
  // Percent first, whatever else the format holds: "$0.00%" is a percentage.
  if (!format.empty() && format.back() == _T('%')) {
    kind_ = Kind::kPercent;
    decimals_ = PercentDecimals(format);
  } else if (format.find_first_of(_T("Y$")) != TextView::npos) {
    kind_ = Kind::kMoney;
    decimals_ = MoneyDecimals(format);
  } else if (IsTimeFormat(format)) {
    // Before the point is looked at: times with fractions of a second hold one, too.
    kind_ = Kind::kTime;
  } else if (format.find(_T('.')) != TextView::npos && format.find(_T('E')) == TextView::npos) {
    kind_ = Kind::kFixed;
    decimals_ = PlainDecimals(format);
  } else if (IsWholeFormat(format)) {
    kind_ = Kind::kFixed;
  }
}

void CellFormat::AppendNumber(double value, Units& out) const {
  switch (kind_) {
    case Kind::kPercent:
      AppendFixed(value * 100, decimals_, out);
      out += _T('%');
      break;
    case Kind::kMoney:
      out += _T('$');
      AppendFixed(value, decimals_, out);
      break;
    case Kind::kTime:
      AppendTime(value, out);
      break;
    case Kind::kFixed:
      AppendFixed(value, decimals_, out);
      break;
    default:
      AppendGeneral(value, out);
  }
}

void CellFormat::AppendDate(double date, Units& out) {
  SYSTEMTIME time = {};
  if (SplitOleDate(date, time)) AppendParts(time.wYear, time.wMonth, time.wDay, _T('-'), out);
}

CString SheetCellText(const VARIANT& value, const CString& format) {
  const TextView shown(format.GetString());
  CellFormat::Units text;
  switch (value.vt) {
    case VT_R8:
      CellFormat(shown).AppendNumber(value.dblVal, text);
      return CString(TextView(text));
    case VT_CY:
      return MoneyText(value.cyVal, shown);
    case VT_DATE:
      CellFormat::AppendDate(value.date, text);
      return CString(TextView(text));
    case VT_BSTR:
      return value.bstrVal == nullptr ? CString()
                                      : CString(TextView(value.bstrVal, SysStringLen(value.bstrVal)));
    default:
      // A truth value or an error has no text: a word in its place would be taken for what the user wrote.
      return {};
  }
}

}  // namespace lorv
