#pragma once

#include "framework/values/variant.h"
#include "tables/grid_array.h"

// The table of tagged values that grids and the spreadsheet exchange hand around, with the method names of
// the array that bound grids know.
//
// Edges and results are those of CGridArray; what differs stands at each operation. Texts of cells, by which
//   Find compares: framework/values/variant_text.h.
// A copy of a cell that fails raises `_com_error`, and so does a search among cells that have no text
// (objects). One thread at a time.
//
//   CXArrayDBToArray t;  t.ReDim(2, 1);  t.SetValue(1, 0, _T("ABC"));  t.FindVal(0, _T("abc"))  gives 1
class COMM_LORV_API CXArrayDBToArray : public CGridArray<_variant_t> {
 public:
  CXArrayDBToArray() = default;

  // As SetArray, but all cells are empty afterwards.
  int ReDim(__int64 rows, int columns);
  // Dimension 1: rows, 2: declared columns, any other: 0.
  __int64 GetCount(short dimension) const;

  void SetValue(int row, int column, const _variant_t& value) { SetValueAt(row, column, value); }
  void SetValue(int row, int column, _variant_t&& value) { SetValueAt(row, column, std::move(value)); }
  const _variant_t& GetValue(int row, int column) const { return GetValueAt(row, column); }

  // The count of rows added at the end; 0 if there is no memory for all of them.
  long AppendRows(long count);
  // Always `count`. A row outside the table counts as its nearer end.
  long InsertRows(long row, long count);
  // The count of rows that were there to be removed.
  long DeleteRows(long row, long count);
  // Always 1. The declared width stays as it is.
  int DeleteColumns(int column, int count);

  // The first row whose cell in the column fulfils the comparison with the value, or -1.
  // Direction: 0 forward to the last row, 1 backward to row 0, any other finds nothing. A start outside the
  //   table counts as its nearer end when the search leads inwards.
  // Comparison: 1 equal, 2 greater, 3 greater or equal, 4 less, 5 less or equal, 6 different, of the value
  //   with the cell, as texts: "10" is less than "9". Values of different tags fulfil none.
  // Value type: 10 and 13 distinguish letter case, any other does not.
  long Find(long start_row, long column, const VARIANT& value, long direction, long comparison,
            long value_type) const;
  // The first row with an equal value, letter case aside; -1 outside the declared width.
  int FindVal(int column, const _variant_t& value) const;

  // Keeps the shape; every cell is then the whole number 0.
  void Clear();

 private:
  static int ValueCompare(long comparison, bool exact_case, const VARIANT& value, const VARIANT& cell);
};
