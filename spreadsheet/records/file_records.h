#pragma once

#include <vector>

#include "grid/records/record_set.h"
#include "spreadsheet/workbook_file.h"

namespace lorv {

// The rows of a text table (CSV) or of the first sheet of an .xlsx file as records: the first row names the
// fields, every other row is a record. Values are the texts of the cells; cells beyond the named fields are
// left out.
//
// Open raises as WorkbookFile does for what cannot be read, and the set is then as it was; a file without
// rows makes an empty set. The file is read once and may be changed or gone afterwards. One thread at a time.
//
//   FileRecords records;  records.Open(_T("/data/bill.csv"));  grid.SetDataSource(&records);
class COMM_LORV_API FileRecords : public CERecordset {
 public:
  void Open(const CString& file);

  int GetFieldCount() const override { return static_cast<int>(fields_.size()); }
  CString GetFieldName(int field) const override;
  bool IsEOF() const override { return row_ >= rows_; }
  void MoveFirst() override;
  void MoveNext() override;
  _variant_t GetFieldValue(int field) const override;

 private:
  void ReadRow();

  WorkbookFile book_;
  std::vector<CString> fields_;
  std::vector<CString> values_;  // of the present record
  long rows_ = 0;                // of the sheet, the one of the names counted
  long row_ = 0;
};

}  // namespace lorv
