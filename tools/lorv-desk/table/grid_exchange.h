#pragma once

#include "grid/basic/basic_grid.h"
#include "spreadsheet/exchange_grid.h"

namespace lorv::tool {

// The suite's grid as the exchange with spreadsheets asks for it. The grid must live as long.
class GridExchange : public ExchangeGrid {
 public:
  explicit GridExchange(CBCGPBasicGridCtrl& grid) : grid_(grid) {}

  long RowCount() override { return grid_.GetRowCount(); }
  int ColumnCount() override { return grid_.GetColumnCount(); }
  bool IsColumnVisible(int column) override { return grid_.GetColumnVisible(column) != FALSE; }
  CString ColumnName(int column) override { return grid_.GetColumnName(column); }
  _variant_t Value(long row, int column) override { return grid_.GetValue(static_cast<int>(row), column); }

  long FirstVisibleRow() override { return grid_.GetFirstRow(); }
  void SetFirstVisibleRow(long row) override { grid_.SetFirstRow(static_cast<int>(row)); }
  void SetCurrentRow(short row) override { grid_.SetRow(row); }
  void LockRedraw() override;
  void UnlockRedraw() override;

  void MergeRange(const CBCGPGridRange& range) override { grid_.MergeRange(range); }
  void UnionCells(CList<CBCGPGridRange>& ranges) override;

  void RemoveAll() override { grid_.RemoveAll(); }
  void AddColumn(int width) override { grid_.AddColumn(_T(""), width, nullptr); }
  void AutoSizeLastColumn() override;
  void AddRow() override { grid_.AddRow(FALSE); }
  void SetValue(long row, int column, const _variant_t& value) override {
    grid_.SetValue(static_cast<int>(row), column, value, FALSE);
  }

 private:
  CBCGPBasicGridCtrl& grid_;
  int locks_ = 0;
};

}  // namespace lorv::tool
