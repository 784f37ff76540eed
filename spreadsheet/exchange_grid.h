#pragma once

#include "framework/collections/list.h"
#include "framework/native/export.h"
#include "framework/values/variant.h"
#include "gridcore/cell_range.h"

namespace lorv {

// What the exchange with spreadsheets asks of a grid. A grid answers it beside its own interface.
//
// Units: rows and columns count from 0, widths are pixels.
// One thread: that of the user interface.
class COMM_LORV_API ExchangeGrid {
 public:
  ExchangeGrid() = default;
  ExchangeGrid(const ExchangeGrid&) = delete;
  ExchangeGrid& operator=(const ExchangeGrid&) = delete;
  virtual ~ExchangeGrid() = default;

  virtual long RowCount() = 0;
  virtual int ColumnCount() = 0;
  virtual bool IsColumnVisible(int column) = 0;
  virtual CString ColumnName(int column) = 0;
  virtual _variant_t Value(long row, int column) = 0;

  virtual long FirstVisibleRow() = 0;
  virtual void SetFirstVisibleRow(long row) = 0;
  virtual void SetCurrentRow(short row) = 0;
  // Calls nest: painting goes on at the last Unlock.
  virtual void LockRedraw() = 0;
  virtual void UnlockRedraw() = 0;

  virtual void MergeRange(const CBCGPGridRange& range) = 0;
  // Appends the merged ranges that the grid shows.
  virtual void UnionCells(CList<CBCGPGridRange>& ranges) = 0;

  virtual void RemoveAll() = 0;
  virtual void AddColumn(int width) = 0;
  // The last column fills the room that is left.
  virtual void AutoSizeLastColumn() = 0;
  // One row with the grid's count of columns, at the end.
  virtual void AddRow() = 0;
  virtual void SetValue(long row, int column, const _variant_t& value) = 0;
};

// Keeps a grid from painting for a scope.
class ExchangeRedrawLock {
 public:
  explicit ExchangeRedrawLock(ExchangeGrid& grid) : grid_(grid) { grid_.LockRedraw(); }
  ExchangeRedrawLock(const ExchangeRedrawLock&) = delete;
  ExchangeRedrawLock& operator=(const ExchangeRedrawLock&) = delete;
  ~ExchangeRedrawLock() { grid_.UnlockRedraw(); }

 private:
  ExchangeGrid& grid_;
};

// The export and import of a grid, as its menu offers them.
//
// `mode` is added to the columns that are written, and to the columns that are taken over: a negative one
//   leaves that many trailing columns out. A merged range goes one row down in the sheet, for the titles.
// Import empties the grid; one without columns gets as many as the table has, 80 wide.
// Result: as CAdExcel2GridEx::ToExcel; and false for a table without columns, the grid then being as it was.
COMM_LORV_API bool GridToExcel(ExchangeGrid& grid, int mode);
COMM_LORV_API bool GridFromExcel(ExchangeGrid& grid, int mode);

}  // namespace lorv
