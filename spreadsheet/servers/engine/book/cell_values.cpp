#include "spreadsheet/servers/engine/book/cell_values.h"

#include <cmath>

#include "framework/objects/exceptions.h"
#include "framework/values/ole_date.h"
#include "spreadsheet/servers/engine/engine_failure.h"

// Values on their way into cells and out of them, where the engine behaves as the programs do: a date takes a
// format that shows it, a number under such a format comes back as a date, and errors have one code. What a
// file could not hold is refused here, at the cell, and not when the workbook is saved.

namespace lorv::engine {
namespace {

double RealOf(const VARIANT& value) {
  if (value.vt == VT_R8 || value.vt == VT_DATE) return value.dblVal;
  _variant_t real;
  // Money and whole numbers of any size become reals: a sheet has no other numbers.
  const HRESULT code = ChangeValueType(real, value, VT_R8);
  if (FAILED(code)) AfxThrowOleException(code);
  return real.dblVal;
}

void PutNumber(Book& book, Cell& cell, const VARIANT& value) {
  const double number = NumberOf(value, book.dates_of_1904);
  if (value.vt == VT_DATE) {
    CellStyle style = book.styles.Style(cell.style());
    // A cell that has a format of its own keeps it.
    if (style.format == 0) {
      style.format = book.styles.FormatId(kPlainDate);
      cell.SetStyle(book.styles.StyleId(style));
    }
  }
  cell.SetNumber(number);
}

void PutText(Book& book, Cell& cell, TextView text) {
  CheckText(text);
  // An empty text and no value are one and the same in a sheet.
  if (text.empty()) {
    cell.SetEmpty();
  } else {
    cell.SetWord(CellKind::kText, book.texts.Add(text));
  }
}

void LookAtNumber(const Book& book, const Cell& cell, SheetCell& look) {
  look.kind = VT_R8;
  look.number = cell.number();
  if (!book.styles.IsDate(look.format)) return;
  const auto date = DateOf(cell.number(), book.dates_of_1904);
  if (!date) return;
  look.kind = VT_DATE;
  look.number = *date;
}

}  // namespace

double NumberOf(const VARIANT& value, bool dates_of_1904) {
  const double number = RealOf(value);
  if (!std::isfinite(number)) Fail(_T("数值超出范围，无法写入单元格。"));
  // Callers count days in one system, whatever the workbook's own.
  return value.vt == VT_DATE && dates_of_1904 ? number - kDaysTo1904 : number;
}

std::optional<double> DateOf(double number, bool dates_of_1904) {
  const double date = number + (dates_of_1904 ? kDaysTo1904 : 0);
  // Before 0 and behind the last year there are no dates.
  if (!(date >= 0 && date < kBehindOleDates)) return std::nullopt;
  return date;
}

void CheckText(TextView text) {
  if (text.size() > kMaxCellText) Fail(_T("文字超过32767个字符，无法写入单元格。"));
}

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
      // A caller's error is "no value"; sheets have a word for that and for none of the other codes.
      cell.SetWord(CellKind::kError, book.texts.Add(_T("#N/A")));
      break;
    default:
      PutNumber(book, cell, value);
  }
}

// Calls and showing both go this way, so that a cell cannot come out differently by one of them.
SheetCell LookAt(const Book& book, const Cell& cell) {
  SheetCell look;
  look.format = book.styles.Style(cell.style()).format;
  switch (cell.kind()) {
    case CellKind::kNumber:
      LookAtNumber(book, cell, look);
      break;
    case CellKind::kText:
      look.kind = VT_BSTR;
      look.text = book.texts.At(cell.text());
      break;
    case CellKind::kBool:
      look.kind = VT_BOOL;
      look.number = cell.flag() ? 1 : 0;
      break;
    case CellKind::kError:
      look.kind = VT_ERROR;
      break;
    default:
      break;
  }
  return look;
}

_variant_t CellValue(const Book& book, const Sheet& sheet, long row, long column) {
  const Cell* const cell = sheet.cells.Find(row, column);
  if (cell == nullptr) return {};
  const SheetCell look = LookAt(book, *cell);
  switch (look.kind) {
    case VT_R8:
    case VT_DATE:
      return {look.number, look.kind};
    case VT_BSTR:
      return _variant_t(_bstr_t(CString(look.text)));
    case VT_BOOL:
      return _variant_t(look.number != 0);
    case VT_ERROR:
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
