#include "spreadsheet/servers/engine/cell_values.h"

#include <cmath>

#include "framework/objects/exceptions.h"
#include "framework/values/ole_date.h"
#include "spreadsheet/servers/engine/engine_failure.h"

namespace lorv::engine {
namespace {

// Day 0 of the system that counts from 1904, in the other one.
constexpr double kDaysTo1904 = 1462;
constexpr LPCTSTR kPlainDate = _T("yyyy/m/d");

double RealOf(const VARIANT& value) {
  if (value.vt == VT_R8 || value.vt == VT_DATE) return value.dblVal;
  _variant_t real;
  const HRESULT code = ChangeValueType(real, value, VT_R8);
  if (FAILED(code)) AfxThrowOleException(code);
  return real.dblVal;
}

void PutNumber(Book& book, Cell& cell, const VARIANT& value) {
  double number = RealOf(value);
  if (!std::isfinite(number)) Fail(_T("数值超出范围，无法写入单元格。"));
  if (value.vt == VT_DATE) {
    CellStyle style = book.styles.Style(cell.style());
    if (style.format == 0) {
      style.format = book.styles.FormatId(kPlainDate);
      cell.SetStyle(book.styles.StyleId(style));
    }
    if (book.dates_of_1904) number -= kDaysTo1904;
  }
  cell.SetNumber(number);
}

void PutText(Book& book, Cell& cell, TextView text) {
  if (text.size() > kMaxCellText) Fail(_T("文字超过32767个字符，无法写入单元格。"));
  if (text.empty()) {
    cell.SetEmpty();
  } else {
    cell.SetWord(CellKind::kText, book.texts.Add(text));
  }
}

_variant_t NumberValue(const Book& book, const Cell& cell) {
  if (!book.styles.IsDate(book.styles.Style(cell.style()).format)) return {cell.number()};
  const double date = cell.number() + (book.dates_of_1904 ? kDaysTo1904 : 0);
  // Before 0 and behind the last year there are no dates.
  if (!(date >= 0 && date < kBehindOleDates)) return {cell.number()};
  return {date, VT_DATE};
}

}  // namespace

void PutCellValue(Book& book, Sheet& sheet, long row, long column, const VARIANT& value) {
  const bool empty = value.vt == VT_EMPTY || value.vt == VT_NULL;
  if (empty && sheet.cells.Find(row, column) == nullptr) return;
  Cell& cell = sheet.cells.At(row, column);
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      cell.SetEmpty();
      break;
    case VT_BSTR:
      PutText(book, cell,
              TextView(value.bstrVal == nullptr ? _T("") : value.bstrVal, SysStringLen(value.bstrVal)));
      break;
    case VT_BOOL:
      cell.SetWord(CellKind::kBool, value.boolVal != VARIANT_FALSE ? 1 : 0);
      break;
    case VT_ERROR:
      cell.SetWord(CellKind::kError, book.texts.Add(_T("#N/A")));
      break;
    default:
      PutNumber(book, cell, value);
  }
}

_variant_t CellValue(const Book& book, const Sheet& sheet, long row, long column) {
  const Cell* const cell = sheet.cells.Find(row, column);
  if (cell == nullptr) return {};
  switch (cell->kind()) {
    case CellKind::kNumber:
      return NumberValue(book, *cell);
    case CellKind::kText:
      return _variant_t(_bstr_t(CString(book.texts.At(cell->text()))));
    case CellKind::kBool:
      return _variant_t(cell->flag());
    case CellKind::kError:
      return {long{kFailureCode}, VT_ERROR};
    default:
      return {};
  }
}

const CellStyle& StyleOf(const Book& book, const Sheet& sheet, long row, long column) {
  const Cell* const cell = sheet.cells.Find(row, column);
  return book.styles.Style(cell == nullptr ? 0 : cell->style());
}

void PutStyle(Book& book, Sheet& sheet, long row, long column, const CellStyle& style) {
  sheet.cells.At(row, column).SetStyle(book.styles.StyleId(style));
}

}  // namespace lorv::engine
