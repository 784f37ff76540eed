#include "spreadsheet/records/file_records.h"

#include <algorithm>

// Records out of a file that holds a table.

namespace lorv {

void FileRecords::Open(const CString& file) {
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

void FileRecords::ReadRow() {
  values_ = IsEOF() ? std::vector<CString>() : book_.RowTexts(0, row_);
}

void FileRecords::MoveFirst() {
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
  const auto place = static_cast<std::size_t>(field);
  return place < values_.size() ? _variant_t(values_[place]) : _variant_t();
}

}  // namespace lorv
