#include "TEXPRESSCAL/exact/exact_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/simd/block_work.h"

// Rows of an exact formula in blocks: the caller's columns are the cells of a program, without a copy.
// Numbers that leave 32 bits when they are rounded need a warning, and so does a NaN where the result hides
// it; blocks cannot give it. For each such part a program of it alone is run beside, and the rows in doubt
// go to the tree.

namespace lorv {
namespace {

// From here on a number may leave 32 bits when it is rounded or cut.
constexpr double kNearTheEnd = kEndOf32Bits - 2;

double AnyFunction(unsigned short kind, double x) {
  return NumberFunction(kind, x);
}

// One program over blocks of the caller's columns.
class Blocks {
 public:
  Blocks(const FormulaProgram& program, std::size_t names)
      : program_(program), loops_(BestBlockLoops(program.SavedNumbers())), names_(names) {
    for (std::size_t cell = 0; cell < program.ConstantEnd(); ++cell)
      cells_.push_back({nullptr, program.Cells()[cell]});
    tails_.resize(names);
  }

  // The errors of the rows, or null where there is none.
  const std::uint8_t* Evaluate(const double* const* columns, std::size_t first, std::size_t rows,
                               double* results) {
    if (has_errors_) errors_.fill(0);
    for (std::size_t name = 0; name < names_; ++name) {
      if (columns[name] != nullptr) cells_[name].column = ColumnOf(columns[name] + first, rows, name);
    }
    has_errors_ = loops_->evaluate({program_.Steps().data(), program_.Steps().size(), cells_.data(),
                                    program_.ConstantEnd(), rows, results, false, errors_.data(),
                                    scratch_.get(), AnyFunction, nullptr, 0});
    return has_errors_ ? errors_.data() : nullptr;
  }

  // Asks `doubted` for each row whose result does not lie below `end`.
  void ReportLargeRows(const double* const* columns, std::size_t first, std::size_t rows, double end,
                       const ExactRows::RowEvaluation& doubted) {
    std::array<double, kBlockRows> results;
    Evaluate(columns, first, rows, results.data());
    for (std::size_t i = 0; i < rows; ++i) {
      // Written so that not-a-number is asked about, too.
      if (!(std::fabs(results[i]) < end)) doubted(first + i);
    }
  }

 private:
  // The loops read whole strides: the last rows are read from a copy.
  const double* ColumnOf(const double* column, std::size_t rows, std::size_t name) {
    if (rows % kBlockStride == 0) return column;
    tails_[name].fill(0);
    std::copy_n(column, rows, tails_[name].begin());
    return tails_[name].data();
  }

  const FormulaProgram& program_;
  const BlockLoops* loops_;
  std::size_t names_;
  std::vector<BlockCell> cells_;
  std::vector<std::array<double, kBlockRows>> tails_;
  std::array<std::uint8_t, kBlockRows> errors_{};
  bool has_errors_ = false;
  std::unique_ptr<BlockScratch> scratch_ = std::make_unique_for_overwrite<BlockScratch>();
};

void WriteCodes(const std::uint8_t* errors, std::size_t rows, int* codes) {
  for (std::size_t i = 0; i < rows; ++i) codes[i] = errors == nullptr ? 0 : errors[i];
}

}  // namespace

bool ExactRows::AddGuard(const ExprNode* part, double end, const FormulaProgram::SlotOf& slot_of) {
  auto guard = std::make_unique<Guard>();
  guard->end = end;
  if (!guard->program.Make(part, names_, slot_of) || BestBlockLoops(guard->program.SavedNumbers()) == nullptr)
    return false;
  guards_.push_back(std::move(guard));
  return true;
}

bool ExactRows::Make(const ExprNode* root, std::size_t names, const std::vector<const ExprNode*>& hidden,
                     const FormulaProgram::SlotOf& slot_of) {
  names_ = names;
  if (!program_.Make(root, names, slot_of) || BestBlockLoops(program_.SavedNumbers()) == nullptr)
    return false;
  std::vector<const ExprNode*> open{root};
  while (!open.empty()) {
    const ExprNode* const node = open.back();
    open.pop_back();
    if (node == nullptr) continue;
    open.push_back(node->left);
    open.push_back(node->right);
    if (GoesThrough32Bits(node->kind) && !AddGuard(node->left, kNearTheEnd, slot_of)) return false;
  }
  return std::all_of(hidden.begin(), hidden.end(), [&](const ExprNode* part) {
    return AddGuard(part, std::numeric_limits<double>::infinity(), slot_of);
  });
}

void ExactRows::Evaluate(const Task& task, const RowEvaluation& doubted) const {
  Blocks blocks(program_, names_);
  std::vector<std::unique_ptr<Blocks>> guards;
  for (const auto& guard : guards_) guards.push_back(std::make_unique<Blocks>(guard->program, names_));
  for (std::size_t first = 0; first < task.rows; first += kBlockRows) {
    const std::size_t rows = std::min(kBlockRows, task.rows - first);
    const std::uint8_t* const errors = blocks.Evaluate(task.columns, first, rows, task.results + first);
    if (task.codes != nullptr) WriteCodes(errors, rows, task.codes + first);
    for (std::size_t i = 0; i < guards.size(); ++i) {
      guards[i]->ReportLargeRows(task.columns, first, rows, guards_[i]->end, doubted);
    }
  }
}

}  // namespace lorv
