#include <algorithm>

#include "grid/bridge/true_db_grid.h"

// Binding to a set of records: its values are copied into the grid's cells, once.

namespace {

constexpr int kFieldColumnWidth = 80;  // pixels at 96 dots an inch

}  // namespace

void CBcgTrueDbGridCtrl::SetDataSource(CERecordset* records) {
  if (records == nullptr) return;
  const int fields = records->GetFieldCount();
  // Counted before columns are made: the rows of a first binding come out blank.
  const int filled = std::min(fields, GetColumnCount());
  const auto life = Watch();
  if (GetRowCount() > 0) RemoveAll();
  if (life.expired()) return;
  if (GetColumnCount() == 0)
    for (int field = 0; field < fields; ++field)
      InsertColumn(field, records->GetFieldName(field), Scaled(kFieldColumnWidth), -1, FALSE);
  if (records->IsEOF()) {
    AdjustLayout();
    return;
  }
  TakeRecords(*records, filled);
  records->MoveFirst();
}

void CBcgTrueDbGridCtrl::TakeRecords(CERecordset& records, int fields) {
  const auto life = Watch();
  // Filters are asked for all rows with the first one and at the end.
  bool first = true;
  for (records.MoveFirst(); !records.IsEOF(); records.MoveNext()) {
    const auto trusted = TrustRowHeights(!first);
    const int row = AddRow(TRUE);
    first = false;
    for (int field = 0; field < fields && !life.expired(); ++field)
      SetValue(row, GetColumnsInfo().FindUnmovedColumn(field), records.GetFieldValue(field), TRUE);
    if (life.expired()) return;
  }
  AdjustLayout();
}
