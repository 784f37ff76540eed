#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "TEXPRESSCAL/compiled/fused_steps.h"
#include "TEXPRESSCAL/language/expression_node.h"
#include "TEXPRESSCAL/simd/formula_step.h"
#include "framework/collections/aligned_row.h"

// A formula whose variables stay variables, made from a parsed tree to be evaluated many times: a sequence
// of steps over an accumulator and numbered cells. The value and the error are those of evaluating the tree
// itself, to the last bit: each step applies the tree's own rule, and the steps stand in the order in which
// the tree is evaluated, since the last error written is the one that counts.
namespace lorv {

class FormulaProgram {
 public:
  // Cells: first those of the variables, then the constants, then room for intermediate results.
  static constexpr std::size_t kMaxCells = 4096;
  static constexpr std::size_t kMaxSteps = 0x8000;

  // The variable that a number leaf stands for, or -1 for a constant.
  using SlotOf = std::function<int(const ExprNode*)>;

  // False, with nothing of use in the program, for a tree with texts, missing operands or more than
  // kMaxCells.
  bool Make(const ExprNode* root, std::size_t slots, const SlotOf& slot_of);

  // Evaluates the program on the variables' numbers, which stand in the first cells.
  double Evaluate(int& error) {
    error = 0;
    return fused_steps_.front().run(fused_steps_.data(), 0, cells_.data(), &error);
  }

  double* Slots() { return cells_.data(); }
  std::size_t SlotCount() const { return slots_; }
  const std::vector<Step>& Steps() const { return steps_; }
  // The cells behind the variables' hold the constants, ConstantEnd() is the first one for intermediate
  // results.
  const AlignedRow<double>& Cells() const { return cells_; }
  std::size_t ConstantEnd() const { return constant_end_; }
  std::size_t SavedNumbers() const { return cells_.size() - constant_end_; }

 private:
  friend class Compiler;

  std::vector<Step> steps_;
  std::vector<FusedStep> fused_steps_;
  AlignedRow<double> cells_;
  std::size_t slots_ = 0;
  std::size_t constant_end_ = 0;
};

}  // namespace lorv
