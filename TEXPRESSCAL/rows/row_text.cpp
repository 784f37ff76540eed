#include "TEXPRESSCAL/rows/row_text.h"

// Single rows by a calculator of their own, as a caller would do it in a loop. It is asked for rows that no
// plan fits, and for all rows where there is no plan; since it is the calculator itself, nothing needs to be
// kept equal.

namespace lorv {

// The columns' names are made known once; from then on their values are written where they stand.
RowText::RowText(const CAdExpCalculate& calculator, const RowTable& table)
    : table_(table), values_(calculator.Values()), formula_(calculator.GetExpr()), calculator_(calculator) {
  calculator_ = calculator;  // the keywords come along
  calculator_.SetVarValue(&values_);
  for (const ValueColumn& column : table.columns) calculator_.SetVarValue(column.name, 0, false);
  // In a loop of its own: a name that comes new may move the values before it.
  for (const ValueColumn& column : table.columns) places_.push_back(&values_[column.name]);
}

// Setting the formula again is what lets the calculator use its own plan.
void RowText::Evaluate(std::size_t row) {
  ValuesOf(row);
  calculator_.SetExpr(formula_);
  int error = 0;
  const double result = calculator_.Calculate(error);
  table_.Put(row, result, error);
}

const CMapValue& RowText::ValuesOf(std::size_t row) {
  for (std::size_t i = 0; i < places_.size(); ++i) *places_[i] = table_.columns[i].values[row];
  return values_;
}

}  // namespace lorv
