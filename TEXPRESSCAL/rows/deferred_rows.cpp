#include "TEXPRESSCAL/rows/deferred_rows.h"

#include <bit>

#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"

// Rows that a block leaves over because one of their values does not fit its place as a plain number; mostly
// it is a third. They are gathered and evaluated as a block of their own with divisors; the rest goes to the
// text. Order does not matter: each row knows where its result goes.

namespace lorv {
namespace {

double AnyFunction(unsigned short kind, double x) {
  return NumberFunction(kind, x);
}

}  // namespace

// Not cleared: what a program has not written it does not read.
BlockExecutor::BlockExecutor() : scratch_(std::make_unique_for_overwrite<BlockScratch>()) {}

const std::uint8_t* BlockExecutor::Evaluate(const RowPlan& plan, const BlockTask& task) {
  if (has_errors_) errors_.fill(0);
  const FormulaProgram& program = plan.Program();
  has_errors_ =
      plan.Loops().evaluate({program.Steps().data(), program.Steps().size(), task.cells.data(),
                             program.ConstantEnd(), task.rows, task.results, task.streams, errors_.data(),
                             scratch_.get(), AnyFunction, task.columns.data(), task.columns.size()});
  return has_errors_ ? errors_.data() : nullptr;
}

// Made when enough rows have come to pay for it. Its columns are the readings: the rows that wait lie
// anywhere.
void DeferredRows::MakePlan() {
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

// A bit for each row that has to be evaluated as text.
std::uint64_t DeferredRows::Read() {
  std::uint64_t refused = 0;
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    if (plan_.Slots()[i].column != nullptr) refused |= ReadSlot(plan_.Slots()[i], readings_[i]);
  }
  return refused;
}

// What stands behind the rows that wait is read as well, left over from earlier ones, and ignored.
std::uint64_t DeferredRows::ReadSlot(const RowPlan::Slot& slot, Reading& reading) {
  for (std::size_t k = 0; k < count_; ++k) values_[k] = slot.column[rows_[k]];
  const bool is_easy = FormulaPlan::IsFree(slot.rule) && slot.rule.takes_third;
  std::uint64_t doubtful = waiting_;
  if (is_easy)
    doubtful &= plan_.Loops().read_thirds(values_.data(), reading.numbers.data(), reading.divisors.data(),
                                          kDeferredRows);
  std::uint64_t refused = 0;
  for (; doubtful != 0; doubtful &= doubtful - 1) {
    const auto k = static_cast<std::size_t>(std::countr_zero(doubtful));
    if (!FormulaPlan::Reads(slot.rule, values_[k], reading.numbers[k], reading.divisors[k]))
      refused |= std::uint64_t{1} << k;
  }
  return refused;
}

// The refused rows are left for the text: neither their result nor their error is put.
void DeferredRows::EvaluatePlanned(std::uint64_t refused) {
  std::array<double, kDeferredRows> results;
  const std::uint8_t* const errors = executor_.Evaluate(plan_, {cells_, count_, results.data(), false});
  for (std::size_t k = 0; k < count_; ++k) {
    if ((refused >> k & 1) != 0) continue;
    const int error = errors == nullptr ? 0 : ErrorForCaller(errors[k]);
    texts_.Table().Put(rows_[k], error == 0 ? results[k] : 0, error);
  }
}

// Few rows at the very end are not worth a plan.
void DeferredRows::Finish() {
  if (count_ == 0) return;
  if (!is_tried_ && count_ >= kWorthAPlan) MakePlan();
  std::uint64_t refused = waiting_;
  if (is_planned_) {
    refused = Read();
    EvaluatePlanned(refused);
  }
  for (; refused != 0; refused &= refused - 1)
    texts_.Evaluate(rows_[static_cast<std::size_t>(std::countr_zero(refused))]);
  count_ = waiting_ = 0;
}

}  // namespace lorv
