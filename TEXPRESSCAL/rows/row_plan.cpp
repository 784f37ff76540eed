#include "TEXPRESSCAL/rows/row_plan.h"

#include <algorithm>

// A plan for rows: which cell of the program is read from which column, and which value stands for all rows.
// It is made once per call of CalculateRows and then only read, by any number of threads.

namespace lorv {
namespace {

// Of two columns of one name the later counts.
const double* ColumnOf(const CStrCmp& name, const RowTable& table) {
  const auto named = [&](const ValueColumn& column) { return CStrCmp(column.name) - name == 0; };
  const auto last = std::find_if(table.columns.rbegin(), table.columns.rend(), named);
  return last == table.columns.rend() ? nullptr : last->values;
}

}  // namespace

// Values that are the same in all rows stand in their cells for good; columns wait for each block.
bool RowPlan::Make(const CString& formula, const CMapValue& values, const RowTable& table,
                   FormulaPlan::Thirds thirds) {
  slots_.clear();
  cells_.clear();
  if (!plan_.Make(formula.View(), values, thirds)) return false;
  loops_ = BestBlockLoops(plan_.Program().SavedNumbers());
  if (loops_ == nullptr) return false;
  const FormulaProgram& program = plan_.Program();
  for (std::size_t cell = 0; cell < program.ConstantEnd(); ++cell)
    cells_.push_back({nullptr, program.Cells()[cell]});
  const bool takes_thirds = thirds == FormulaPlan::Thirds::kFit;
  for (const FormulaPlan::Slot& rule : plan_.Slots()) {
    const std::size_t slot = slots_.size();
    const auto& [name, value] = *(values.begin() + static_cast<std::ptrdiff_t>(rule.entry));
    slots_.push_back({rule, ColumnOf(name, table)});
    double divisor = 1;
    // A value that is the same in all rows and does not fit rules all of them out.
    const bool is_column = slots_.back().column != nullptr;
    double& number = cells_[slot].number;
    const bool fits = is_column || (takes_thirds ? FormulaPlan::Reads(rule, value, number, divisor)
                                                 : FormulaPlan::Fits(rule, value, number));
    if (!fits) return false;
    if (takes_thirds) cells_[DivisorCell(slot)].number = divisor;
  }
  return true;
}

}  // namespace lorv
