#pragma once

#include <vector>

#include "grid/records/record_set.h"

namespace lorv {

// Records that a program has at hand. A record may have fewer values than there are fields: the rest is
// empty.
//
//   MemoryRecords records({_T("name"), _T("qty")});  records.Add({_variant_t(_T("beam")), _variant_t(2)});
//   grid.SetDataSource(&records);
class COMM_LORV_API MemoryRecords : public CERecordset {
 public:
  explicit MemoryRecords(std::vector<CString> fields) : fields_(std::move(fields)) {}
  // At the end; the present record stays the present one, and the first record becomes it.
  void Add(std::vector<_variant_t> values) { records_.push_back(std::move(values)); }

  int GetFieldCount() const override { return static_cast<int>(fields_.size()); }
  CString GetFieldName(int field) const override;
  bool IsEOF() const override { return at_ >= records_.size(); }
  void MoveFirst() override { at_ = 0; }
  void MoveNext() override;
  _variant_t GetFieldValue(int field) const override;

 private:
  std::vector<CString> fields_;
  std::vector<std::vector<_variant_t>> records_;
  std::size_t at_ = 0;
};

}  // namespace lorv
