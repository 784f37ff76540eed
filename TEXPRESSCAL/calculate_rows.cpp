#include "TEXPRESSCAL/calculate_rows.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <exception>
#include <memory>
#include <system_error>
#include <thread>
#include <vector>

#include "TEXPRESSCAL/block_work.h"
#include "TEXPRESSCAL/evaluator.h"
#include "TEXPRESSCAL/formula_plan.h"
#include "TEXPRESSCAL/number_functions.h"

namespace lorv {
namespace {

// Blocks that a thread takes at a time.
constexpr std::size_t kBlocksTaken = 16;

double AnyFunction(unsigned short kind, double x) {
  return NumberFunction(kind, x);
}

// What all threads share: the rows and where their outcome goes.
struct RowTable {
  std::span<const ValueColumn> columns;
  std::size_t rows;
  double* results;
  int* errors;

  void Put(std::size_t row, double result, int error) const {
    results[row] = result;
    if (errors != nullptr) errors[row] = error;
  }
};

// A calculator that works one row after the other as text, with values of its own.
class TextWorker {
 public:
  TextWorker(const CAdExpCalculate& calculator, const RowTable& table) : calculator_(calculator) {
    calculator_ = calculator;  // the keywords come along
    values_ = calculator.Values();
    calculator_.SetVarValue(&values_);
    formula_ = calculator.GetExpr();
    Begin(table);
  }

  void Work(const RowTable& table, std::size_t row) {
    for (std::size_t i = 0; i < places_.size(); ++i) *places_[i] = table.columns[i].values[row];
    calculator_.SetExpr(formula_);
    int error = 0;
    const double result = calculator_.Calculate(error);
    table.Put(row, result, error);
  }

  const CMapValue& Values() const { return values_; }
  const CString& Formula() const { return formula_; }

 private:
  // Makes the columns' names known; from then on their values are written where they stand.
  void Begin(const RowTable& table) {
    if (table.rows == 0) return;
    for (const ValueColumn& column : table.columns)
      calculator_.SetVarValue(column.name, column.values[0], false);
    for (const ValueColumn& column : table.columns) places_.push_back(&values_[column.name]);
  }

  CMapValue values_;
  std::vector<double*> places_;  // of the columns' values
  CString formula_;
  CAdExpCalculate calculator_;
};

// How to work whole blocks; the same for all threads.
class BlockPlan {
 public:
  // False where the formula has to be worked as text.
  bool Make(const TextWorker& worker, const RowTable& table) {
    if (table.rows == 0 || !plan_.Make(worker.Formula().View(), worker.Values())) return false;
    loops_ = BestBlockLoops(plan_.Program());
    if (loops_ == nullptr) return false;
    const FormulaProgram& program = plan_.Program();
    for (std::size_t cell = 0; cell < program.ConstantEnd(); ++cell)
      cells_.push_back({nullptr, program.Cells()[cell]});
    for (const FormulaPlan::Slot& slot : plan_.Slots()) {
      const auto& [name, value] = *(worker.Values().begin() + static_cast<std::ptrdiff_t>(slot.entry));
      columns_.push_back(ColumnOf(name, table));
      // A value that is the same in all rows and does not fit rules all of them out.
      if (columns_.back() == nullptr && !FormulaPlan::Fits(slot, value, cells_[columns_.size() - 1].number))
        return false;
    }
    return true;
  }

  const BlockLoops& Loops() const { return *loops_; }
  const FormulaPlan& Plan() const { return plan_; }
  const std::vector<BlockCell>& Cells() const { return cells_; }
  // The values of a slot; null for one that is the same in all rows.
  const double* Column(std::size_t slot) const { return columns_[slot]; }
  std::size_t SlotCount() const { return columns_.size(); }

 private:
  static const double* ColumnOf(const CStrCmp& name, const RowTable& table) {
    const auto named = [&](const ValueColumn& column) { return CStrCmp(column.name) - name == 0; };
    const auto last = std::find_if(table.columns.rbegin(), table.columns.rend(), named);
    return last == table.columns.rend() ? nullptr : last->values;
  }

  FormulaPlan plan_;
  const BlockLoops* loops_ = nullptr;
  std::vector<BlockCell> cells_;
  std::vector<const double*> columns_;
};

// One thread's work on blocks.
class BlockWorker {
 public:
  BlockWorker(const BlockPlan& plan, const RowTable& table, const CAdExpCalculate& calculator)
      : plan_(plan),
        table_(table),
        texts_(calculator, table),
        cells_(plan.Cells()),
        readings_(plan.SlotCount()),
        room_(std::make_unique_for_overwrite<BlockRoom>()) {}

  void Work(std::size_t first) {
    const std::size_t rows = std::min(kBlockRows, table_.rows - first);
    for (std::size_t slot = 0; slot < readings_.size(); ++slot) Read(slot, first, rows);
    const FormulaProgram& program = plan_.Plan().Program();
    const bool has_told =
        plan_.Loops().work({program.Steps().data(), cells_.data(), program.ConstantEnd(), rows,
                            table_.results + first, told_.data(), room_.get(), AnyFunction});
    if (table_.errors != nullptr) std::fill_n(table_.errors + first, rows, 0);
    if (has_told) PutErrors(first, rows);
    if (any_refused_) WorkRefused(first, rows);
  }

 private:
  void WorkRefused(std::size_t first, std::size_t rows) {
    for (std::size_t i = 0; i < rows; ++i) {
      if (refused_[i]) texts_.Work(table_, first + i);
    }
    std::fill_n(refused_.begin(), rows, false);
    any_refused_ = false;
  }

  void PutErrors(std::size_t first, std::size_t rows) {
    for (std::size_t i = 0; i < rows; ++i) {
      if (ErrorForCaller(told_[i]) != 0) table_.Put(first + i, 0, ErrorForCaller(told_[i]));
    }
    std::fill_n(told_.begin(), rows, std::uint8_t{0});
  }

  // Reads the values of one slot; rows whose value does not fit are left to the text.
  void Read(std::size_t slot, std::size_t first, std::size_t rows) {
    const double* column = plan_.Column(slot);
    if (column == nullptr) return;
    column += first;
    cells_[slot].column = readings_[slot].data();
    const FormulaPlan::Slot& rule = plan_.Plan().Slots()[slot];
    const double* const readings = readings_[slot].data();
    const std::size_t ahead = std::min(kBlockRows, table_.rows - first - rows);
    const bool all_read = plan_.Loops().read(column, readings_[slot].data(), rows, ahead);
    if (all_read && FormulaPlan::IsFree(rule)) return;
    for (std::size_t i = 0; i < rows; ++i) {
      const bool has_reading = !std::isnan(readings[i]);
      if (has_reading && (FormulaPlan::IsFree(rule) || FormulaPlan::FitsClosely(rule, column[i]))) continue;
      refused_[i] = any_refused_ = true;
    }
  }

  const BlockPlan& plan_;
  const RowTable& table_;
  TextWorker texts_;
  std::vector<BlockCell> cells_;
  std::vector<std::array<double, kBlockRows>> readings_;
  std::unique_ptr<BlockRoom> room_;
  std::array<std::uint8_t, kBlockRows> told_{};
  std::array<bool, kBlockRows> refused_{};
  bool any_refused_ = false;
};

// Shares the rows out: each thread takes the next few blocks until none is left.
class RowJob {
 public:
  RowJob(const CAdExpCalculate& calculator, const RowTable& table) : calculator_(calculator), table_(table) {
    TextWorker worker(calculator, table);
    planned_ = plan_.Make(worker, table);
  }

  void Run(int threads) {
    std::vector<std::thread> others;
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
  // What fails for want of memory fails the whole call, in the calling thread.
  void Share() noexcept {
    try {
      planned_ ? ShareBlocks() : ShareTexts();
    } catch (...) {
      if (!has_failed_.exchange(true)) failure_ = std::current_exception();
    }
  }
  void ShareBlocks() {
    BlockWorker worker(plan_, table_, calculator_);
    Take([&](std::size_t first, std::size_t end) {
      for (; first < end; first += kBlockRows) worker.Work(first);
    });
  }
  void ShareTexts() {
    TextWorker worker(calculator_, table_);
    Take([&](std::size_t first, std::size_t end) {
      for (; first < end; ++first) worker.Work(table_, first);
    });
  }
  template <class Work>
  void Take(Work work) {
    constexpr std::size_t kTaken = kBlockRows * kBlocksTaken;
    for (;;) {
      const std::size_t first = next_.fetch_add(kTaken);
      if (first >= table_.rows || has_failed_) return;
      work(first, std::min(first + kTaken, table_.rows));
    }
  }

  const CAdExpCalculate& calculator_;
  const RowTable& table_;
  BlockPlan plan_;
  bool planned_ = false;
  std::atomic<std::size_t> next_{0};
  std::atomic<bool> has_failed_{false};
  std::exception_ptr failure_;
};

}  // namespace

void CalculateRows(const CAdExpCalculate& calculator, std::span<const ValueColumn> columns, std::size_t rows,
                   double* results, int* errors, int threads) {
  const RowTable table{columns, rows, results, errors};
  RowJob(calculator, table).Run(threads);
}

}  // namespace lorv
