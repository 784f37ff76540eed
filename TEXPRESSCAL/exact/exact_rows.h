#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "TEXPRESSCAL/compiled/compiler.h"

namespace lorv {

// The rows of an exact formula, evaluated in blocks straight from the caller's columns.
class ExactRows {
 public:
  // False where a tree cannot be evaluated in blocks. `names` is the count of columns, `hidden` are the
  // parts that may be NaN or infinite while the result is finite.
  bool Make(const ExprNode* root, std::size_t names, const std::vector<const ExprNode*>& hidden,
            const FormulaProgram::SlotOf& slot_of);

  struct Task {
    const double* const* columns;
    std::size_t rows;
    double* results;
    int* codes;  // the last code of each row; null: not wanted
  };
  using RowEvaluation = std::function<void(std::size_t row)>;
  // `doubted` is called for each row in which a number beyond 32 bits may have been cut, or a part may be NaN
  // or infinite; it evaluates the row anew.
  void Evaluate(const Task& task, const RowEvaluation& doubted) const;

 private:
  // A part of the formula whose value decides whether a row can be trusted.
  struct Guard {
    FormulaProgram program;
    double end;  // values from here on, and NaN, are doubted
  };
  bool AddGuard(const ExprNode* part, double end, const FormulaProgram::SlotOf& slot_of);

  FormulaProgram program_;
  std::vector<std::unique_ptr<Guard>> guards_;
  std::size_t names_ = 0;
};

}  // namespace lorv
