#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "TEXPRESSCAL/rows/row_plan.h"
#include "TEXPRESSCAL/rows/row_text.h"

namespace lorv {

// A block of rows to be evaluated, and where its results go.
struct BlockTask {
  const std::vector<BlockCell>& cells;
  std::size_t rows;
  double* results;
  bool streams;                              // write the results past the caches
  std::span<const double* const> columns{};  // of a whole block: what follows is fetched
};

// Runs a program on one block of rows after the other, with one thread's scratch memory. What a block leaves
// in the scratch is never read by the next: only the errors are cleared, and only where there were some.
class BlockExecutor {
 public:
  BlockExecutor();

  // Evaluates a program on a block; the error codes of its rows, or null if none has failed. They hold until
  // the next call.
  const std::uint8_t* Evaluate(const RowPlan& plan, const BlockTask& task);

 private:
  std::unique_ptr<BlockScratch> scratch_;
  std::array<std::uint8_t, kBlockRows> errors_{};
  bool has_errors_ = false;
};

// The rows that a block leaves over because a value is a third, or nearly one: in the text it is a division,
// and whatever stands around it binds to its parts. They are gathered until there are enough of them to be
// evaluated as a block, by a plan with divisors. What fits no plan is evaluated as text at once.
class DeferredRows {
 public:
  DeferredRows(RowText& texts, BlockExecutor& executor) : texts_(texts), executor_(executor) {}

  void Add(std::size_t row) {
    rows_[count_] = row;
    waiting_ |= std::uint64_t{1} << count_;
    texts_.Table().Prefetch(row);
    if (++count_ == kDeferredRows) Finish();
  }
  // Evaluates what is still waiting.
  void Finish();

 private:
  static constexpr std::size_t kDeferredRows = 64;
  static_assert(kDeferredRows % kBlockStride == 0);
  // As many rows are evaluated as text in the time that making a plan takes.
  static constexpr std::size_t kWorthAPlan = 32;

  using DeferredNumbers = std::array<double, kDeferredRows>;
  struct Reading {
    DeferredNumbers numbers;
    DeferredNumbers divisors;
  };

  void MakePlan();
  std::uint64_t Read();
  std::uint64_t ReadSlot(const RowPlan::Slot& slot, Reading& reading);
  void EvaluatePlanned(std::uint64_t refused);

  RowText& texts_;
  BlockExecutor& executor_;
  bool is_tried_ = false;    // a plan was asked for
  bool is_planned_ = false;  // and there is one
  RowPlan plan_;
  std::vector<BlockCell> cells_;
  AlignedRow<Reading> readings_;  // of the plan's slots
  DeferredNumbers values_{};
  std::array<std::size_t, kDeferredRows> rows_;
  std::size_t count_ = 0;
  std::uint64_t waiting_ = 0;  // a bit for each
};

}  // namespace lorv
