#pragma once

#include <vector>

#include "TEXPRESSCAL/compiled/formula_plan.h"
#include "TEXPRESSCAL/rows/row_table.h"
#include "TEXPRESSCAL/simd/block_work.h"

namespace lorv {

// How to evaluate a formula for whole blocks of rows, and which column each of its slots is read from. It is
// made once for all rows and shared by the threads, which only read it. It is the FormulaPlan of a formula
// set again, so rows and single evaluations agree by construction.
class RowPlan {
 public:
  struct Slot {
    FormulaPlan::Slot rule;
    const double* column;  // null for a value that is the same in all rows
  };

  // `values` are those of a row, of which the ones without a column are the same in all rows. False where the
  // formula has to be evaluated as text.
  bool Make(const CString& formula, const CMapValue& values, const RowTable& table,
            FormulaPlan::Thirds thirds);

  const BlockLoops& Loops() const { return *loops_; }
  const FormulaProgram& Program() const { return plan_.Program(); }
  const std::vector<Slot>& Slots() const { return slots_; }
  // The cell of a slot's divisor, in a plan that takes thirds.
  std::size_t DivisorCell(std::size_t slot) const { return plan_.FirstDivisor() + slot; }
  // What stands in the program's cells; those of the slots with columns wait for the rows' numbers, while
  // their divisors are 1.
  const std::vector<BlockCell>& Cells() const { return cells_; }

 private:
  FormulaPlan plan_;
  const BlockLoops* loops_ = nullptr;
  std::vector<Slot> slots_;
  std::vector<BlockCell> cells_;
};

}  // namespace lorv
