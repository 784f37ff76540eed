#include "tools/lorv-desk/table/edited_table.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "framework/text/utf8.h"
#include "tools/lorv-desk/table/table_text.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// A table between its file and the grid. The file is the user's, and other programs read it: what was not
// edited comes back cell by cell, in the form that it was found in.

namespace lorv::tool {
namespace {

constexpr int kRowsATurn = 4096;  // between two calls of `progress`

_variant_t ValueOf(std::string_view utf8) {
  // No text is no value: the grid shows both alike and an empty cell costs nothing.
  if (utf8.empty()) return {};
  const auto text = Utf8ToText(utf8);
  return _variant_t(_bstr_t(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false));
}

std::string TextOf(const CBCGPGridRow& row, int cell) {
  // A text is written as it is; what a cell shows of it may be formatted.
  const CBCGPGridItem* const item = row.FindItem(cell);
  if (item != nullptr && item->GetValue().vt == VT_BSTR)
    return TextToUtf8(TextOfBstr(item->GetValue().bstrVal));
  CString room;
  return TextToUtf8(row.ShownText(cell, room));
}

// Puts empty cells behind those of a row.
void Widen(CBCGPGridRow& row, int columns) {
  while (row.GetItemCount() < columns) row.AddValue(_variant_t());
}

// The names that are written: as many as were read, and more where a column with a name was moved behind
// them.
int CountNames(const CBCGPBasicGridCtrl& grid, int read) {
  int count = grid.GetColumnCount();
  while (count > read && grid.GetColumnName(count - 1).IsEmpty()) --count;
  return std::max(count, read);
}

// The cells that a row is written with: those it was read with, and whatever stands behind them.
int CellsToWrite(const CBCGPGridRow& row, int columns) {
  // A row of the file remembers how long it was; one made in the grid has 0 there.
  const auto read = static_cast<int>(row.GetData());
  int count = row.GetItemCount();
  const int least = std::max(1, read == 0 ? columns : read);
  while (count > least && TextOf(row, count - 1).empty()) --count;
  return std::max(count, least);
}

}  // namespace

bool EditedTable::Read(CBCGPBasicGridCtrl& grid, const Progress& progress) {
  if (path_ == "-") throw BadInput(Say("a table to be edited is a file; standard input is none"));
  InputBytes bytes(path_, std::cin);
  if (bytes.IsWorkbook())
    throw BadInput(Say("{} is a workbook; its sheets come as tables by `lorv sheet`", {Quoted(path_)}));
  // Blanks and empty lines stay: an editor gives back what it was given.
  CsvReader reader(bytes, Encoding::kAuto, false, CsvBlanks::kKept);
  const bool whole = ReadRows(reader, grid, [&] { return progress(bytes.Done(), bytes.Size()); });
  form_ = reader.Form();
  grid.AdjustLayout();
  return whole;
}

bool EditedTable::ReadRows(CsvReader& reader, CBCGPBasicGridCtrl& grid,
                           const std::function<bool()>& goes_on) {
  CsvRow cells;
  named_columns_ = reader.Next(cells) ? static_cast<int>(cells.Size()) : 0;
  for (int column = 0; column < named_columns_; ++column)
    grid.InsertColumn(column, CString::FromUtf8(std::string(cells[static_cast<std::size_t>(column)])),
                      grid.Scaled(80), -1, FALSE);
  int columns = std::max(1, named_columns_);
  long long all_cells = 0;
  for (int row = 0; reader.Next(cells); ++row) {
    columns = std::max(columns, static_cast<int>(cells.Size()));
    // Of the widest row so far: all rows are widened to it in the end.
    all_cells = std::max(all_cells, (row + 1LL) * columns);
    if (all_cells > kMaxTableCells)
      throw BadInput(PlaceText(path_, cells.Place()) +
                     Say("a table of more than {} cells", {std::to_string(kMaxTableCells)}));
    auto fresh = std::make_unique<CBCGPGridRow>(columns, cells.Size());
    for (std::size_t cell = 0; cell < cells.Size(); ++cell) fresh->AddValue(ValueOf(cells[cell]));
    // The grid takes the row over only if it has added it.
    if (grid.AddRow(fresh.get(), FALSE) != -1) static_cast<void>(fresh.release());
    if (row % kRowsATurn == kRowsATurn - 1 && !goes_on()) return false;
  }
  // Columns without a name are those behind the first row's last cell.
  for (int column = grid.GetColumnCount(); column < columns; ++column)
    grid.InsertColumn(column, _T(""), grid.Scaled(80), -1, FALSE);
  for (int row = 0; row < grid.GetRowCount(); ++row) Widen(*grid.GetRow(row), columns);
  return goes_on();
}

void EditedTable::Write(CBCGPBasicGridCtrl& grid) {
  // In the file's own code page if it can hold all; nothing of the attempt stays if not.
  if (WriteAs(grid, form_)) return;
  form_.encoding = Encoding::kUtf8;
  form_.has_mark = true;
  WriteAs(grid, form_);
}

bool EditedTable::WriteAs(CBCGPBasicGridCtrl& grid, const CsvForm& form) const {
  OutputFile file(path_, std::cout);
  TableText text(form);
  file.Write(text.Head());
  const int named = CountNames(grid, named_columns_);
  for (int column = 0; column < named; ++column) text.Line().Add(grid.GetColumnName(column).ToUtf8());
  if (named > 0) file.Write(text.TakeRow());
  const int rows = grid.GetRowCount();
  // What cannot be written in this form need not be written to its end.
  for (int at = 0; at < rows && text.IsWhole(); ++at) {
    const CBCGPGridRow* const row = grid.GetRow(at);
    if (row == nullptr) continue;
    const int count = CellsToWrite(*row, grid.GetColumnCount());
    for (int cell = 0; cell < count; ++cell) text.Line().Add(TextOf(*row, cell));
    file.Write(text.TakeRow());
  }
  if (!text.IsWhole()) return false;
  file.Commit();
  return true;
}

}  // namespace lorv::tool
