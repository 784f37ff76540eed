#include "spreadsheet/servers/engine/cell_values.h"

#include <cmath>

#include "framework/objects/exceptions.h"
#include "framework/values/ole_date.h"
#include "spreadsheet/servers/engine/engine_failure.h"

// Values on their way into cells and out of them, where the engine behaves as the programs do: a date takes a
// format that shows it, a number under such a format comes back as a date, and errors have one code. What a
// file could not hold is refused here, at the cell, and not when the workbook is saved.

namespace lorv::engine {
namespace {

constexpr LPCTSTR kPlainDate = _T("yyyy/m/d");

double RealOf(const VARIANT& value) {
  if (value.vt == VT_R8 || value.vt == VT_DATE) return value.dblVal;
  _variant_t real;
  // Money and whole numbers of any size become reals: a sheet has no other numbers.
  const HRESULT code = ChangeValueType(real, value, VT_R8);
  if (FAILED(code)) AfxThrowOleException(code);
  return real.dblVal;
}

void PutNumber(Book& book, Cell& cell, const VARIANT& value) {
  double number = RealOf(value);
  if (!std::isfinite(number)) Fail(_T("数值超出范围，无法写入单元格。"));
  if (value.vt == VT_DATE) {
    CellStyle style = book.styles.Style(cell.style());
    // A cell that has a format of its own keeps it.
    if (style.format == 0) {
      style.format = book.styles.FormatId(kPlainDate);
      cell.SetStyle(book.styles.StyleId(style));
    }
    // Callers count days in one system, whatever the workbook's own.
    if (book.dates_of_1904) number -= kDaysTo1904;
  }
  cell.SetNumber(number);
}

void PutText(Book& book, Cell& cell, TextView text) {
  if (text.size() > kMaxCellText) Fail(_T("文字超过32767个字符，无法写入单元格。"));
  // An empty text and no value are one and the same in a sheet.
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
  // Emptying cells that are not there must not make them: the exchange empties whole merged areas.
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
