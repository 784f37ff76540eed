#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "TEXPRESSCAL/compiled/compiler.h"

namespace lorv {

// The rows of an exact formula, evaluated in blocks straight from the caller's columns.
class ExactRows {
 public:
  // False where a tree cannot be evaluated in blocks. `names` is the count of columns.
  bool Make(const ExprNode* root, std::size_t names, const FormulaProgram::SlotOf& slot_of);

  // The last code of each row goes to `codes` unless it is null. `overflowed`, if there is one, is asked for
  // each row in which a number beyond 32 bits may have been cut; it works the row afresh.
  struct Task {
    const double* const* columns;
    std::size_t rows;
    double* results;
    int* codes;
  };
  using RowEvaluation = std::function<void(std::size_t row)>;
  void Evaluate(const Task& task, const RowEvaluation& overflowed) const;

 private:
  FormulaProgram program_;
  std::vector<std::unique_ptr<FormulaProgram>>
      guards_;  // of the arguments of functions that go through 32 bits
  std::size_t names_ = 0;
};

}  // namespace lorv
