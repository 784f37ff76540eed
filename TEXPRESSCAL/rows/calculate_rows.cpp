#include "TEXPRESSCAL/calculate_rows.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/rows/deferred_rows.h"
#include "TEXPRESSCAL/rows/row_plan.h"
#include "TEXPRESSCAL/rows/row_text.h"

// One formula over many rows: blocks of rows through a plan, shared out among threads, and by text what does
// not fit. Each row gets what the calculator would give it alone, whatever the number of threads: rows share
// nothing but the plan, which nobody writes.

namespace lorv {
namespace {

// Blocks that a thread takes at a time.
// Enough that the counter is no bottleneck, few enough that all threads end at about the same time.
constexpr std::size_t kBlocksTaken = WorkingSize(48, 1);

bool IsAtLine(const double* number) {
  return reinterpret_cast<std::uintptr_t>(number) % kMemoryLine == 0;
}

// One thread's share of the blocks.
// The column of a slot is read, block by block, into the cells of the program; the program is run; rows with
// a value that does not fit are deferred.
class BlockEvaluator {
 public:
  BlockEvaluator(const RowPlan& plan, RowText& texts)
      : plan_(plan),
        table_(texts.Table()),
        deferred_(texts, executor_),
        cells_(plan.Cells()),
        readings_(plan.Slots().size()),
        streams_(table_.rows >= RowTable::kManyRows) {}

  // Up to a block's rows.
  void Evaluate(std::size_t first, std::size_t rows) {
    columns_.clear();
    for (std::size_t slot = 0; slot < readings_.size(); ++slot) Read(slot, first, rows);
    if (rows < kBlockRows) columns_.clear();  // the first rows or the last: little follows
    double* const results = table_.results + first;
    const std::uint8_t* const errors =
        executor_.Evaluate(plan_, {cells_, rows, results, streams_ && IsAtLine(results), columns_});
    if (errors != nullptr) PutErrors(errors, first, rows);
    PassOnRefused(first);
  }

  // Rows that are to be evaluated later may have errors, others have none.
  void ClearErrors(std::size_t first, std::size_t end) const {
    if (!streams_) return table_.ClearErrors(first, end);
    if (table_.errors != nullptr) plan_.Loops().stream_no_errors(table_.errors + first, end - first);
  }

  void Finish() {
    deferred_.Finish();
    if (streams_) plan_.Loops().end_stream();
  }

 private:
  struct alignas(kMemoryLine) Reading {
    std::array<double, kBlockRows> numbers;
    bool often_thirds = false;
  };

  // Reads the values of one slot, and marks the rows whose value does not fit.
  void Read(std::size_t slot, std::size_t first, std::size_t rows) {
    const auto& [rule, whole_column] = plan_.Slots()[slot];
    if (whole_column == nullptr) return;
    const double* const column = whole_column + first;
    columns_.push_back(column);
    auto& [readings, often_thirds] = readings_[slot];
    cells_[slot].column = plan_.Loops().read(column, readings.data(), rows, often_thirds, refused_);
    if (cells_[slot].column == column && rows % kBlockStride != 0) {
      std::copy_n(column, rows, readings.data());
      cells_[slot].column = readings.data();
    }
    if (FormulaPlan::IsFree(rule)) return;
    for (std::size_t i = 0; i < rows; ++i) {
      if (!FormulaPlan::FitsClosely(rule, column[i]))
        refused_[i / kGroupRows] |= std::uint64_t{1} << i % kGroupRows;
    }
  }

  // A refused row has been evaluated with a number that is not its value's: what came of it counts for
  // nothing, and an error written now would stay.
  void PutErrors(const std::uint8_t* errors, std::size_t first, std::size_t rows) const {
    for (std::size_t i = 0; i < rows; ++i) {
      const int error = ErrorForCaller(errors[i]);
      if (error != 0 && !IsRefused(i)) table_.Put(first + i, 0, error);
    }
  }
  bool IsRefused(std::size_t row) const { return (refused_[row / kGroupRows] >> row % kGroupRows & 1) != 0; }

  // Clears the marks for the next block.
  void PassOnRefused(std::size_t first) {
    for (std::uint64_t& marks : refused_) {
      for (; marks != 0; marks &= marks - 1)
        deferred_.Add(first + static_cast<std::size_t>(std::countr_zero(marks)));
      first += kGroupRows;
    }
  }

  const RowPlan& plan_;
  const RowTable& table_;
  BlockExecutor executor_;
  DeferredRows deferred_;
  std::vector<BlockCell> cells_;
  AlignedRow<Reading> readings_;        // of the slots
  std::vector<const double*> columns_;  // of the block
  RowMarks refused_{};
  const bool streams_;
};

// Shares the rows out: each thread takes the next few blocks until none is left.
class RowJob {
 public:
  RowJob(const CAdExpCalculate& calculator, const RowTable& table) : calculator_(calculator), table_(table) {
    RowText texts(calculator, table);
    const CMapValue& values = texts.ValuesOf(0);
    while (lead_ < std::min(table.rows, kBlockRows) && !IsAtLine(table.results + lead_)) ++lead_;
    next_ = lead_;
    // Thirds among the values that are the same in all rows ask for divisors in every row.
    planned_ = plan_.Make(texts.Formula(), values, table, FormulaPlan::Thirds::kDoNotFit) ||
               plan_.Make(texts.Formula(), values, table, FormulaPlan::Thirds::kFit);
  }

  void Run(int threads) {
    std::vector<std::thread> others;
    // A thread for less than one share costs more than it does.
    const std::size_t useful = table_.rows / (kBlockRows * kBlocksTaken) + 1;
    const std::size_t wanted = std::min(static_cast<std::size_t>(std::max(threads, 1)), useful);
    try {
      while (others.size() + 1 < wanted) others.emplace_back([this] { Share(); });
    } catch (const std::system_error&) {
      // Fewer threads then; the rows are shared out all the same.
    }
    Share();
    for (std::thread& other : others) other.join();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  // A lack of memory fails the whole call, in the calling thread.
  void Share() noexcept {
    try {
      planned_ ? ShareBlocks() : ShareTexts();
    } catch (...) {
      if (!has_failed_.exchange(true)) failure_ = std::current_exception();
    }
  }
  // The deferred rows are finished before the thread ends: no other thread knows of them.
  void ShareBlocks() {
    RowText texts(calculator_, table_);
    BlockEvaluator evaluator(plan_, texts);
    Take([&](std::size_t first, std::size_t end) {
      evaluator.ClearErrors(first, end);
      for (; first < end; first += kBlockRows) evaluator.Evaluate(first, std::min(kBlockRows, end - first));
    });
    evaluator.Finish();
  }
  void ShareTexts() {
    RowText texts(calculator_, table_);
    Take([&](std::size_t first, std::size_t end) {
      table_.ClearErrors(first, end);
      for (; first < end; ++first) texts.Evaluate(first);
    });
  }
  // Hands out blocks in order, so that neighbouring memory is read by one thread at a time.
  template <class Process>
  void Take(Process process) {
    constexpr std::size_t kTaken = kBlockRows * kBlocksTaken;
    if (!is_lead_taken_.exchange(true)) process(0, lead_);
    for (;;) {
      const std::size_t first = next_.fetch_add(kTaken);
      if (first >= table_.rows || has_failed_) return;
      process(first, std::min(first + kTaken, table_.rows));
    }
  }

  const CAdExpCalculate& calculator_;
  const RowTable& table_;
  RowPlan plan_;
  bool planned_ = false;
  // The first rows, up to where the results meet a line of memory, are evaluated apart from the others.
  std::size_t lead_ = 0;
  std::atomic<bool> is_lead_taken_{false};
  std::atomic<std::size_t> next_{0};
  std::atomic<bool> has_failed_{false};
  std::exception_ptr failure_;
};

}  // namespace

void CalculateRows(const CAdExpCalculate& calculator, std::span<const ValueColumn> columns, std::size_t rows,
                   double* results, int* errors, int threads) {
  if (rows == 0) return;
  const RowTable table{columns, rows, results, errors};
  RowJob(calculator, table).Run(threads);
}

}  // namespace lorv
