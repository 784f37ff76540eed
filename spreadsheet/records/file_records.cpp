#include "spreadsheet/records/file_records.h"

#include <algorithm>

// Records out of a file that holds a table. The whole file is read at once, as a grid walks through the
// records again and again and the file may be gone by then; a row becomes texts when it is the present one.

namespace lorv {

void FileRecords::Open(const CString& file) {
  // All that can fail comes first, so that a file that is refused leaves the set as it was.
  WorkbookFile book(file);
  const long rows = book.SheetCount() == 0 ? 0 : book.RowCount(0);
  std::vector<CString> fields = rows == 0 ? std::vector<CString>() : book.RowTexts(0, 0);
  book_ = std::move(book);
  fields_ = std::move(fields);
  rows_ = rows;
  MoveFirst();
}

CString FileRecords::GetFieldName(int field) const {
  return field < 0 || field >= GetFieldCount() ? CString() : fields_[static_cast<std::size_t>(field)];
}

// Once a record, not once a field: a row is found by a search and its numbers are printed.
void FileRecords::ReadRow() {
  values_ = IsEOF() ? std::vector<CString>() : book_.RowTexts(0, row_);
}

void FileRecords::MoveFirst() {
  // The first row holds the names; in a set without records it is its end already.
  row_ = std::min(rows_, 1L);
  ReadRow();
}

void FileRecords::MoveNext() {
  if (IsEOF()) return;
  ++row_;
  ReadRow();
}

_variant_t FileRecords::GetFieldValue(int field) const {
  if (IsEOF() || field < 0 || field >= GetFieldCount()) return {};
  // Rows end with their last value, and may be shorter than the row of the names.
  const auto place = static_cast<std::size_t>(field);
  return place < values_.size() ? _variant_t(values_[place]) : _variant_t();
}

}  // namespace lorv
