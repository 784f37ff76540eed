#include "grid/records/memory_records.h"

// Records of a program as a set that a grid can be bound to.

namespace lorv {

CString MemoryRecords::GetFieldName(int field) const {
  return field < 0 || field >= GetFieldCount() ? CString() : fields_[static_cast<std::size_t>(field)];
}

void MemoryRecords::MoveNext() {
  if (!IsEOF()) ++at_;
}

_variant_t MemoryRecords::GetFieldValue(int field) const {
  if (IsEOF() || field < 0 || field >= GetFieldCount()) return {};
  const std::vector<_variant_t>& record = records_[at_];
  const auto place = static_cast<std::size_t>(field);
  // A record may be shorter than the names.
  return place < record.size() ? record[place] : _variant_t();
}

}  // namespace lorv
