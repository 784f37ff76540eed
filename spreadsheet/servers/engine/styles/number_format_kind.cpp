#include "spreadsheet/servers/engine/styles/number_format_kind.h"

#include <algorithm>
#include <iterator>

#include "spreadsheet/servers/engine/styles/built_in_format_table.h"

// Whether a number format shows a date, and the formats that files name by number only. Sheets store dates as
// plain numbers, so the format is all that distinguishes "2024-3-7" from 45358; it is looked at once for each
// format of a workbook, not for each cell.

namespace lorv::engine {
namespace {

// The length of what stands at a place of a format and is shown as it is: quoted text, an escaped
// character, a blank's width, a filler, or something in brackets. 0 for a letter of the format itself.
std::size_t LiteralLength(TextView format, std::size_t at) {
  const auto through = [&](TCHAR closing) {
    // What is never closed goes to the end: such a format is damaged, and what follows is no letter of it.
    const std::size_t end = format.find(closing, at + 1);
    return (end == TextView::npos ? format.size() : end + 1) - at;
  };
  switch (format[at]) {
    case _T('"'):
      return through(_T('"'));
    case _T('['):
      return through(_T(']'));
    case _T('\\'):
    case _T('_'):
    case _T('*'):
      return std::min<std::size_t>(2, format.size() - at);
    case _T('A'):
    case _T('a'):
      // "AM/PM" has a letter of months in it.
      return CompareWithoutCase(format.substr(at, 5), TextView(_T("AM/PM"))) == 0 ? 5 : 1;
    default:
      return 0;
  }
}

}  // namespace

bool IsDateFormat(TextView format) {
  bool month = false;
  bool time = false;
  if (CompareWithoutCase(format, TextView(kGeneralFormat)) == 0) return false;
  // The first section is that of positive numbers; dates have no other.
  for (std::size_t at = 0; at < format.size() && format[at] != _T(';');) {
    if (const std::size_t literal = LiteralLength(format, at); literal != 0) {
      // Hours, minutes and seconds that count on beyond a day.
      const TextView elapsed(_T("hms"));
      time = time || (literal > 2 && format[at] == _T('[') &&
                      elapsed.find(ToLower(format[at + 1])) != TextView::npos);
      at += literal;
      continue;
    }
    const TCHAR letter = ToLower(format[at++]);
    if (letter == _T('y') || letter == _T('d')) return true;
    month = month || letter == _T('m');
    time = time || letter == _T('h') || letter == _T('s');
  }
  // "m" beside hours or seconds means minutes.
  return month && !time;
}

std::basic_string<TCHAR> SpelledBracket(TextView inside) {
  // "[$-804]": languages and signs of money.
  if (inside.size() < 3 || inside.back() != _T(']') || inside[1] == _T('$'))
    return std::basic_string<TCHAR>(inside);
  const TCHAR first = ToLower(inside[1]);
  const bool elapsed = inside.find_first_not_of(inside[1], 1) == inside.size() - 1 &&
                       (first == _T('h') || first == _T('m') || first == _T('s'));
  std::basic_string<TCHAR> text(inside);
  bool letters = true;
  for (const TCHAR c : inside.substr(1, inside.size() - 2)) letters = letters && ToLower(c) != c;
  // A colour, or hours that count on beyond a day; conditions and number signs are left.
  if (!letters) return text;
  for (std::size_t i = elapsed ? 1 : 2; i < text.size(); ++i) text[i] = ToLower(text[i]);
  return text;
}

CString SpelledFormat(TextView format) {
  std::basic_string<TCHAR> text;
  for (std::size_t at = 0; at < format.size();) {
    const std::size_t length = std::max<std::size_t>(LiteralLength(format, at), 1);
    const TextView piece = format.substr(at, length);
    text += format[at] == _T('[') ? SpelledBracket(piece) : std::basic_string<TCHAR>(piece);
    at += length;
  }
  return CString(TextView(text));
}

LPCTSTR BuiltInFormat(unsigned id) {
  const auto* const found =
      std::lower_bound(std::begin(kBuiltInFormats), std::end(kBuiltInFormats), id,
                       [](const BuiltInFormatRow& row, unsigned wanted) { return row.id < wanted; });
  return found != std::end(kBuiltInFormats) && found->id == id ? found->text : kGeneralFormat;
}

}  // namespace lorv::engine
