#include "spreadsheet/workbook_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "framework/values/ole_date.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_writer.h"

// Workbooks for callers who read and write them as files, without a program and without the exchange. It
// stands directly on the engine's book: values go through the same rules as those that an exchange puts, so
// both ways make the same files.

namespace lorv {
namespace {

using engine::Cell;
using engine::CellKind;

// Programs show no more levels than these.
constexpr int kMostRowLevels = 7;

engine::Sheet& SheetOf(const engine::Book& book, int sheet) {
  return *book.sheets[static_cast<std::size_t>(sheet)];
}

// All digits, and a point in every country: other programs read these texts.
CString NumberText(double number) {
  char digits[32];
  const char* const end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
  return CString::FromUtf8(std::string(static_cast<const char*>(digits), end));
}

CString DateText(double date) {
  SYSTEMTIME time = {};
  // Beyond the calendar's years the number is all there is.
  if (!SplitOleDate(date, time)) return NumberText(date);
  CString text;
  text.Format(_T("%04d-%02d-%02d"), time.wYear, time.wMonth, time.wDay);
  // A date alone has no time of day.
  if (time.wHour + time.wMinute + time.wSecond > 0) {
    text.AppendFormat(_T(" %02d:%02d:%02d"), time.wHour, time.wMinute, time.wSecond);
  }
  return text;
}

CString TextOf(const engine::Book& book, const engine::Sheet& sheet, const Cell& cell) {
  switch (cell.kind()) {
    case CellKind::kText:
    case CellKind::kError:
      // An error reads as the sheet shows it, "#N/A" for instance.
      return CString(book.texts.At(cell.text()));
    case CellKind::kBool:
      return cell.flag() ? _T("TRUE") : _T("FALSE");
    case CellKind::kNumber: {
      const _variant_t value = engine::CellValue(book, sheet, cell.row(), cell.column());
      return value.vt == VT_DATE ? DateText(value.date) : NumberText(value.dblVal);
    }
    default:
      return {};
  }
}

void CheckPlace(long row, long column) {
  if (row < 0 || row >= engine::kMaxRows || column < 0 || column >= engine::kMaxColumns) {
    engine::Fail(_T("超出工作表的行数或列数。"));
  }
}

}  // namespace

WorkbookFile::WorkbookFile() : book_(std::make_shared<engine::Book>()) {}

WorkbookFile::WorkbookFile(const CString& file) : book_(engine::ReadWorkbook(file)) {
  std::erase_if(book_->sheets, [](const auto& sheet) { return sheet->is_chart; });
}

int WorkbookFile::SheetCount() const {
  return static_cast<int>(book_->sheets.size());
}

CString WorkbookFile::SheetName(int sheet) const {
  return SheetOf(*book_, sheet).name;
}

long WorkbookFile::RowCount(int sheet) const {
  const auto& blocks = SheetOf(*book_, sheet).cells.Blocks();
  // From behind, over cells that have a look and no value.
  for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
    const auto last = std::find_if(block->rbegin(), block->rend(),
                                   [](const Cell& cell) { return cell.kind() != CellKind::kEmpty; });
    if (last != block->rend()) return last->row() + 1;
  }
  return 0;
}

std::vector<CString> WorkbookFile::RowTexts(int sheet, long row) const {
  const engine::Sheet& of = SheetOf(*book_, sheet);
  std::vector<CString> texts;
  of.cells.VisitRow(row, [&](const Cell& cell) {
    if (cell.kind() == CellKind::kEmpty) return;
    // Cells come in order, so the row grows to each, and what is between them is empty.
    texts.resize(static_cast<std::size_t>(cell.column()) + 1);
    texts.back() = TextOf(*book_, of, cell);
  });
  return texts;
}

int WorkbookFile::AddSheet(const CString& name, int before) {
  // A name that is refused leaves no sheet behind.
  engine::Sheet named;
  book_->Rename(named, name);
  const std::size_t at = before < 0 ? book_->sheets.size() : static_cast<std::size_t>(before);
  book_->AddSheet(at)->name = named.name;
  return static_cast<int>(at);
}

void WorkbookFile::Put(int sheet, long row, int column, const _variant_t& value, const CellLook& look) {
  CheckPlace(row, column);
  engine::Sheet& of = SheetOf(*book_, sheet);
  engine::CellStyle style;
  if (!look.format.IsEmpty()) style.format = book_->styles.FormatId(look.format);
  style.bold = look.bold;
  // The look first: a date that finds no format takes one of its own.
  if (!(style == engine::CellStyle())) engine::PutStyle(*book_, of, row, column, style);
  engine::PutCellValue(*book_, of, row, column, value);
}

void WorkbookFile::SetRowLevel(int sheet, long row, int level) {
  CheckPlace(row, 0);
  SheetOf(*book_, sheet).row_levels[row] = std::clamp(level, 0, kMostRowLevels);
}

void WorkbookFile::SetWidth(int sheet, int column, double width) {
  CheckPlace(0, column);
  SheetOf(*book_, sheet).PutWidth(column, column, width);
}

void WorkbookFile::FreezeRows(int sheet, long rows) {
  CheckPlace(rows, 0);
  SheetOf(*book_, sheet).frozen_rows = rows;
}

std::string WorkbookFile::Bytes(const Making& making) const {
  return engine::XlsxBytes(*book_, making);
}

bool WorkbookFile::Save(const CString& file, const Making& making) const {
  return engine::WriteWorkbookFile(*book_, file, making);
}

}  // namespace lorv
