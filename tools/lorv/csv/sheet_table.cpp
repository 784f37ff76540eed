#include "tools/lorv/csv/sheet_table.h"

#include <algorithm>
#include <cstring>

#include "tools/lorv/csv/csv_writer.h"

// A sheet of a workbook as the text of a table, row by row as it is read. So workbooks and text files go
// through one reader with one set of checks and messages.

namespace lorv::tool {
namespace {

std::string Trimmed(const std::string& text) {
  constexpr const char* kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

SheetTable::SheetTable(WorkbookFile book, int sheet)
    : book_(std::move(book)), sheet_(sheet), rows_(book_.RowCount(sheet)) {}

std::int64_t SheetTable::Read(void* out, std::size_t size) {
  std::size_t given = 0;
  while (given < size) {
    if (taken_ == made_.size()) {
      if (row_ == rows_) break;
      CsvLine line;
      // As the reader of tables does it with cells that have no quotes around them.
      for (const CString& cell : book_.RowTexts(sheet_, row_)) line.Add(Trimmed(cell.ToUtf8()));
      made_ = line.Take();
      taken_ = 0;
      ++row_;
    }
    const std::size_t count = std::min(size - given, made_.size() - taken_);
    std::memcpy(static_cast<char*>(out) + given, made_.data() + taken_, count);
    given += count;
    taken_ += count;
  }
  return static_cast<std::int64_t>(given);
}

WorkbookFile OpenWorkbook(const std::string& path) {
  return WithWorkbook(path, [&] { return WorkbookFile(CString::FromUtf8(path)); });
}

FirstSheet OpenFirstSheet(const std::string& path) {
  const WorkbookFile book = OpenWorkbook(path);
  FirstSheet first{std::make_unique<SheetTable>(book, 0), 0};
  // A sheet of formats alone holds nothing that could be missed.
  for (int sheet = 1; sheet < book.SheetCount(); ++sheet) first.unread += book.RowCount(sheet) > 0;
  return first;
}

}  // namespace lorv::tool
