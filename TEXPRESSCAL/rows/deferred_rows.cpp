#include "TEXPRESSCAL/rows/deferred_rows.h"

#include <bit>

#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"

namespace lorv {
namespace {

double AnyFunction(unsigned short kind, double x) {
  return NumberFunction(kind, x);
}

}  // namespace

BlockBench::BlockBench() : room_(std::make_unique_for_overwrite<BlockRoom>()) {}

const std::uint8_t* BlockBench::Work(const RowPlan& plan, const BlockTask& task) {
  if (has_told_) told_.fill(0);
  const FormulaProgram& program = plan.Program();
  has_told_ = plan.Loops().work({program.Steps().data(), program.Steps().size(), task.cells.data(),
                                 program.ConstantEnd(), task.rows, task.results, task.streams, told_.data(),
                                 room_.get(), AnyFunction, task.columns.data(), task.columns.size()});
  return has_told_ ? told_.data() : nullptr;
}

void RowLot::MakePlan() {
  is_tried_ = true;
  is_planned_ =
      plan_.Make(texts_.Formula(), texts_.ValuesOf(rows_[0]), texts_.Table(), FormulaPlan::Thirds::kFit);
  if (!is_planned_) return;
  cells_ = plan_.Cells();
  readings_.resize(plan_.Slots().size());
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    if (plan_.Slots()[i].column == nullptr) continue;
    cells_[i].column = readings_[i].numbers.data();
    cells_[plan_.DivisorCell(i)].column = readings_[i].divisors.data();
  }
}

// A bit for each row that has to be worked as text.
std::uint64_t RowLot::Read() {
  std::uint64_t refused = 0;
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    if (plan_.Slots()[i].column != nullptr) refused |= ReadSlot(plan_.Slots()[i], readings_[i]);
  }
  return refused;
}

std::uint64_t RowLot::ReadSlot(const RowPlan::Slot& slot, Reading& reading) {
  for (std::size_t k = 0; k < count_; ++k) values_[k] = slot.column[rows_[k]];
  const bool is_easy = FormulaPlan::IsFree(slot.rule) && slot.rule.takes_third;
  std::uint64_t doubtful = waiting_;
  if (is_easy)
    doubtful &=
        plan_.Loops().read_thirds(values_.data(), reading.numbers.data(), reading.divisors.data(), kLotRows);
  std::uint64_t refused = 0;
  for (; doubtful != 0; doubtful &= doubtful - 1) {
    const auto k = static_cast<std::size_t>(std::countr_zero(doubtful));
    if (!FormulaPlan::Reads(slot.rule, values_[k], reading.numbers[k], reading.divisors[k]))
      refused |= std::uint64_t{1} << k;
  }
  return refused;
}

void RowLot::WorkPlanned(std::uint64_t refused) {
  std::array<double, kLotRows> results;
  const std::uint8_t* const told = bench_.Work(plan_, {cells_, count_, results.data(), false});
  for (std::size_t k = 0; k < count_; ++k) {
    if ((refused >> k & 1) != 0) continue;
    const int error = told == nullptr ? 0 : ErrorForCaller(told[k]);
    texts_.Table().Put(rows_[k], error == 0 ? results[k] : 0, error);
  }
}

void RowLot::Finish() {
  if (count_ == 0) return;
  if (!is_tried_ && count_ >= kWorthAPlan) MakePlan();
  std::uint64_t refused = waiting_;
  if (is_planned_) {
    refused = Read();
    WorkPlanned(refused);
  }
  for (; refused != 0; refused &= refused - 1)
    texts_.Work(rows_[static_cast<std::size_t>(std::countr_zero(refused))]);
  count_ = waiting_ = 0;
}

}  // namespace lorv
