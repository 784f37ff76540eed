#include "TEXPRESSCAL/row_lot.h"

#include "TEXPRESSCAL/evaluator.h"
#include "TEXPRESSCAL/number_functions.h"

namespace lorv {
namespace {

double AnyFunction(unsigned short kind, double x) {
  return NumberFunction(kind, x);
}

}  // namespace

BlockBench::BlockBench() : room_(std::make_unique_for_overwrite<BlockRoom>()) {}

const std::uint8_t* BlockBench::Work(const RowPlan& plan, const std::vector<BlockCell>& cells,
                                     std::size_t rows, double* results) {
  if (has_told_) told_.fill(0);
  const FormulaProgram& program = plan.Program();
  has_told_ = plan.Loops().work({program.Steps().data(), cells.data(), program.ConstantEnd(), rows, results,
                                 told_.data(), room_.get(), AnyFunction});
  return has_told_ ? told_.data() : nullptr;
}

void RowLot::Add(std::size_t row) {
  if (++added_ == kWorthAPlan) MakePlan(row);
  if (!is_planned_ || !Take(row)) return texts_.Work(row);
  if (count_ == kLotRows) Finish();
}

void RowLot::MakePlan(std::size_t row) {
  is_planned_ = plan_.Make(texts_.Formula(), texts_.ValuesOf(row), texts_.Table(), FormulaPlan::Thirds::kFit);
  if (!is_planned_) return;
  cells_ = plan_.Cells();
  readings_.resize(plan_.Slots().size());
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    if (plan_.Slots()[i].column == nullptr) continue;
    cells_[i].column = readings_[i].numbers.data();
    cells_[plan_.DivisorCell(i)].column = readings_[i].divisors.data();
  }
}

bool RowLot::Take(std::size_t row) {
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    const RowPlan::Slot& slot = plan_.Slots()[i];
    if (slot.column == nullptr) continue;
    Reading& reading = readings_[i];
    if (!FormulaPlan::Reads(slot.rule, slot.column[row], reading.numbers[count_], reading.divisors[count_]))
      return false;
  }
  rows_[count_++] = row;
  return true;
}

void RowLot::Finish() {
  if (count_ == 0) return;
  std::array<double, kLotRows> results;
  const std::uint8_t* const told = bench_.Work(plan_, cells_, count_, results.data());
  for (std::size_t i = 0; i < count_; ++i) {
    const int error = told == nullptr ? 0 : ErrorForCaller(told[i]);
    texts_.Table().Put(rows_[i], error == 0 ? results[i] : 0, error);
  }
  count_ = 0;
}

}  // namespace lorv
