#pragma once

#include <vector>

#include "TEXPRESSCAL/rows/row_table.h"

namespace lorv {

// Evaluates single rows by a calculator with values of its own: the rows that fit no plan, and all rows of a
// formula that has none. It does what a caller would do row by row, which is what CalculateRows promises. One
// thread's; it writes straight into the results.
class RowText {
 public:
  RowText(const CAdExpCalculate& calculator, const RowTable& table);

  void Evaluate(std::size_t row);

  // The values of a row by name; beside the columns' those of the calculator.
  const CMapValue& ValuesOf(std::size_t row);
  const CString& Formula() const { return formula_; }
  const RowTable& Table() const { return table_; }

 private:
  const RowTable& table_;
  CMapValue values_;
  std::vector<double*> places_;  // of the columns' values
  CString formula_;
  CAdExpCalculate calculator_;
};

}  // namespace lorv
