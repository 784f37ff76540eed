#pragma once

#include <cstddef>
#include <span>

#include "TEXPRESSCAL/calculator.h"

namespace lorv {

// A name and its values, one for each row.
struct ValueColumn {
  CString name;
  const double* values;
};

// Evaluates a calculator's formula for many rows of values.
//
// For each row the result and the error are those of the calculator itself, to the last bit: every column's
//   value given to its name in the order of the columns (SetVarValue), the formula set afresh, then
//   Calculate. Other names keep the calculator's values, and its keywords count. The calculator is not
//   changed.
// Units: one value a row in each column.
// Edges: no rows do nothing. Of two columns of one name the later counts. A formula whose values cannot be
//   evaluated as numbers alone (texts, values inside quotes) is evaluated row by row as text, and so is a
//   single row with a value that lies between two thousandths, is huge, or is nearly a third before a power.
// Result: `results` and, unless it is null, `errors` get one entry a row. Throws nothing but std::bad_alloc;
//   both are then undefined.
// All arrays are the caller's; the two results lie apart from all columns. At most `threads` threads evaluate
//   the rows, the calling one among them; nobody may change the calculator, its values or the columns
//   meanwhile. Calls with separate calculators are independent.
//
//   const double lengths[] = {1, 2, 3};  double results[3];  CAdExpCalculate c(_T("L*2"));
//   const ValueColumn columns[] = {{_T("L"), lengths}};
//   CalculateRows(c, columns, 3, results, nullptr)  gives 2, 4, 6
COMM_LORV_API void CalculateRows(const CAdExpCalculate& calculator, std::span<const ValueColumn> columns,
                                 std::size_t rows, double* results, int* errors, int threads = 1);

}  // namespace lorv
