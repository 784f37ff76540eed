#pragma once

#include <string>
#include <vector>

#include "spreadsheet/exchange_grid.h"

namespace lorv::test {

// A grid in memory that notes what is done to it.
class TableGrid : public ExchangeGrid {
 public:
  struct Column {
    CString name;
    bool visible = true;
    int width = 80;
  };
  std::vector<Column> columns;
  std::vector<std::vector<_variant_t>> rows;
  std::vector<CBCGPGridRange> merged;
  long first_visible = 0;
  std::vector<std::string> notes;
  int locks = 0;

  long RowCount() override { return static_cast<long>(rows.size()); }
  int ColumnCount() override { return static_cast<int>(columns.size()); }
  bool IsColumnVisible(int column) override { return At(column).visible; }
  CString ColumnName(int column) override { return At(column).name; }
  _variant_t Value(long row, int column) override {
    return rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
  }
  long FirstVisibleRow() override { return first_visible; }
  void SetFirstVisibleRow(long row) override { Note("first visible " + std::to_string(row)); }
  void SetCurrentRow(short row) override { Note("current row " + std::to_string(row)); }
  void LockRedraw() override { ++locks; }
  void UnlockRedraw() override { --locks; }
  void MergeRange(const CBCGPGridRange& range) override {
    merged.push_back(range);
    Note("merge");
  }
  void UnionCells(CList<CBCGPGridRange>& ranges) override {
    for (const auto& range : merged) ranges.AddTail(range);
  }
  void RemoveAll() override {
    rows.clear();
    Note("remove all");
  }
  void AddColumn(int width) override {
    columns.push_back({CString(), true, width});
    Note("add column " + std::to_string(width));
  }
  void AutoSizeLastColumn() override { Note("auto size"); }
  void AddRow() override { rows.emplace_back(columns.size()); }
  void SetValue(long row, int column, const _variant_t& value) override {
    rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = value;
  }

 private:
  Column& At(int column) { return columns[static_cast<std::size_t>(column)]; }
  // With a star while painting is locked.
  void Note(const std::string& what) { notes.push_back(locks > 0 ? what + "*" : what); }
};

}  // namespace lorv::test
