#pragma once

#include <cmath>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/spreadsheet/open_exchange.h"

namespace lorv::test {

// A text of any units: marks of XML, escapes, control characters, halves of pairs.
inline CString RandomText(std::mt19937& random) {
  static const char* const kPieces[] = {
      "007",   "12.50", "-3",   "0",    "<&>\"'", "_x0041_",          "_x",
      "\n",    "\r\n",  "\t",   " ",    "墙",     "\xF0\x9D\x84\x9E", "2024-03-07",
      "1,000", "]]>",   "=1+1", "\x01", "\x1F"};
  CString text;
  for (unsigned left = random() % 4; left > 0; --left) {
    const auto which = static_cast<unsigned>(random() % 24);
    if (which < std::size(kPieces)) {
      text += CString::FromUtf8(kPieces[which]);
    } else {
      constexpr TCHAR kOdd[] = {0xD800, 0xDC00, 0xFFFE, 0xFFFF, 0x7F};
      text += kOdd[which % std::size(kOdd)];
    }
  }
  return text;
}

// A value as tables of the suite hold them: mostly texts, and of every other type some.
inline _variant_t RandomValue(std::mt19937& random) {
  const auto whole = static_cast<long>(random() % 2000001) - 1000000;
  switch (random() % 12) {
    case 0:
      return {static_cast<double>(whole) / 64};
    case 1:
      return {std::ldexp(static_cast<double>(whole), static_cast<int>(random() % 120) - 60)};
    case 2:
      return {whole};
    case 3:
      return {whole % 2 == 0};
    case 4:
      return {static_cast<double>(random() % 80000) + 0.25, VT_DATE};
    case 5:
      return {long{DISP_E_PARAMNOTFOUND}, VT_ERROR};
    case 6:
      return {};
    default:
      return _variant_t(RandomText(random));
  }
}

// A small table of such values, whose corners hold something, so that the used area is the table.
inline CXArrayDBToArray RandomTable(std::mt19937& random, int first_text) {
  CXArrayDBToArray table;
  const int rows = 1 + static_cast<int>(random() % 6);
  const int columns = 1 + static_cast<int>(random() % 4);
  table.ReDim(rows, columns);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) table.SetValue(row, column, RandomValue(random));
  }
  table.SetValue(0, 0, _variant_t(CString(_T('x'), first_text)));
  table.SetValue(rows - 1, columns - 1, _variant_t(_T("end")));
  return table;
}

// What of a table comes back from a sheet: each value as a text, made a value and a format, and shown.
inline std::vector<std::vector<std::string>> ShownRows(const CXArrayDBToArray& table) {
  std::vector<std::vector<std::string>> rows = RowsOf(table);
  OpenExchange exchange;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      COleVariant value;
      const CString sent = VariantToText(table.GetValue(static_cast<int>(row), static_cast<int>(column)));
      CString format = exchange.Str2ExcelValueStyle(sent, value);
      rows[row][column] = Utf8(exchange.ExcelCellValue2Str(value, format));
    }
  }
  return rows;
}

}  // namespace lorv::test
