#pragma once

#include <memory>

#include "grid/records/record_set.h"

namespace lorv {

class SqliteQuery;

// The records of a query on an SQLite database file, read as they are moved over. The database is opened for
// reading only, by the system's SQLite library, which is loaded when it is first needed.
//
// Whole numbers come as VT_I4, beyond 32 bits as VT_I8, other numbers as VT_R8, texts as VT_BSTR; NULL and
//   data that is no text come empty.
// Failure: Open gives false, the set is then empty and stands at its end, and GetFault says why in the words
//   of the library; without the library that it could not be loaded. A record that cannot be read ends the
//   set.
// One thread at a time.
//
//   SqliteRecords records;
//   if (records.Open(_T("/data/bill.db"), _T("SELECT name, qty FROM item"))) grid.SetDataSource(&records);
class COMM_LORV_API SqliteRecords : public CERecordset {
 public:
  SqliteRecords();
  ~SqliteRecords() override;

  bool Open(const CString& file, const CString& query);
  const CString& GetFault() const { return fault_; }

  int GetFieldCount() const override;
  CString GetFieldName(int field) const override;
  bool IsEOF() const override { return !on_record_; }
  void MoveFirst() override;
  void MoveNext() override;
  _variant_t GetFieldValue(int field) const override;

 private:
  void Step();

  std::unique_ptr<SqliteQuery> query_;
  bool on_record_ = false;
  CString fault_;
};

}  // namespace lorv
