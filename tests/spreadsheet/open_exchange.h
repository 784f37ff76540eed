#pragma once

#include "framework/values/variant_text.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "tests/support/print.h"

namespace lorv::test {

// An exchange whose inner operations can be called.
class OpenExchange : public CAdExcel2GridEx {
 public:
  using CAdExcel2GridEx::CAdExcel2GridEx;
  using CAdExcel2GridEx::ExcelCellValue2Str;
  using CAdExcel2GridEx::ftoa;
  using CAdExcel2GridEx::GetFormatOfNumber;
  using CAdExcel2GridEx::IsNumeric;
  using CAdExcel2GridEx::ReadCell;
  using CAdExcel2GridEx::ReadSheet;
  using CAdExcel2GridEx::RowCol2XlsCell;
  using CAdExcel2GridEx::Str2ExcelValueStyle;
  using CAdExcel2GridEx::WriteCell;
};

// A table of texts; "" is an empty text.
inline CXArrayDBToArray TextTable(const std::vector<std::vector<std::string>>& rows) {
  CXArrayDBToArray table;
  const std::size_t columns = rows.empty() ? 0 : rows.front().size();
  table.ReDim(static_cast<__int64>(rows.size()), static_cast<int>(columns));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < columns; ++j) {
      table.SetValue(static_cast<int>(i), static_cast<int>(j), _variant_t(CString::FromUtf8(rows[i][j])));
    }
  }
  return table;
}

inline std::vector<std::vector<std::string>> RowsOf(const CXArrayDBToArray& table) {
  std::vector<std::vector<std::string>> rows(static_cast<std::size_t>(table.GetRowCount()));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (int j = 0; j < table.GetColCount(); ++j) {
      rows[i].push_back(Utf8(VariantToText(table.GetValue(static_cast<int>(i), j))));
    }
  }
  return rows;
}

}  // namespace lorv::test
