#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "TEXPRESSCAL/expression_node.h"

// A formula whose variables stay variables, made from a parsed tree to be worked many times: a row of steps
// over one number in hand and numbered cells. The value and the error are those of working the tree itself,
// to the last bit: each step applies the tree's own rule, and the steps stand in the order in which the tree
// is worked, since the last error written is the one that counts.
namespace lorv {

enum class StepKind : std::uint8_t {
  // These may load the hand from a cell first.
  kAdd,              // hand + cell
  kSubtract,         // hand - cell
  kSubtractFrom,     // cell - hand
  kMultiply,         // hand * cell
  kDivide,           // hand / cell, an error for a cell of 0
  kDivideSilently,   // the same, the error told before
  kPower,            // hand to the cell's power
  kAddProduct,       // hand + cell * other cell
  kSubtractProduct,  // hand - cell * other cell
  kLarger,           // MAX of a cell before the hand
  kSmaller,
  kLargerFirst,  // MAX of the hand before a cell
  kSmallerFirst,
  kLess,  // hand against cell, 1 or 0
  kGreater,
  kLessEqual,
  kGreaterEqual,
  kEqual,
  kNotEqual,
  // These not.
  kLoad,          // takes a cell's number in hand
  kSave,          // puts the number in hand into a cell
  kCheckDivisor,  // an error for a cell of 0
  kNegate,
  kAbsolute,
  kNot,
  kSqrt,
  kLog,
  kFunction,  // the function of one number that `rule` names
  kAnd,       // saves the hand; goes on behind the matching end with 0 unless the hand is a truth
  kOr,        // the same with 1 if it is one
  kEndJoin,   // whether the hand is a truth; `other` is the cell and `rule` the node kind of the beginning
  kIf,        // saves the hand; goes on behind the matching kElse unless the hand is above 0
  kElse,      // saves the hand; goes on behind the matching kEndIf; `other` is the cell of the kIf
  kEndIf,     // `cell` and `other` as at the kElse
  kEnd,
};

constexpr bool MayLoad(StepKind kind) {
  return kind <= StepKind::kNotEqual;
}

// What a step may write beside the number.
struct WorkState {
  double* cells;
  int error;
};

struct Step {
  // Works this step and all behind it.
  double (*run)(const Step* step, double hand, WorkState* state);
  StepKind kind;
  std::uint8_t rule;
  std::uint16_t cell;
  std::uint16_t other;
  // Of a step that may load: the cell that it loads first, or kNoLoad. Of one that may go on elsewhere: how
  // many steps further on.
  std::uint16_t further;

  static constexpr std::uint16_t kNoLoad = 0xFFFF;
  bool Loads() const { return MayLoad(kind) && further != kNoLoad; }
};

class FormulaProgram {
 public:
  // Cells: first those of the variables, then the constants, then room for numbers on their way.
  static constexpr std::size_t kMaxCells = 4096;
  static constexpr std::size_t kMaxSteps = 0x8000;

  // The variable that a number leaf stands for, or -1 for a constant.
  using SlotOf = std::function<int(const ExprNode*)>;

  // False, with nothing of use in the program, for a tree with texts, missing operands or more than
  // kMaxCells.
  bool Make(const ExprNode* root, std::size_t slots, const SlotOf& slot_of);

  // Works the program on the variables' numbers, which stand in the first cells.
  double Work(int& error) {
    WorkState state{cells_.data(), 0};
    const double result = steps_.front().run(steps_.data(), 0, &state);
    error = state.error;
    return result;
  }

  double* Slots() { return cells_.data(); }
  std::size_t SlotCount() const { return slots_; }
  const std::vector<Step>& Steps() const { return steps_; }
  // The cells behind the variables' hold the constants, ConstantEnd() is the first one for numbers on their
  // way.
  const std::vector<double>& Cells() const { return cells_; }
  std::size_t ConstantEnd() const { return constant_end_; }

 private:
  friend class ProgramMaker;

  std::vector<Step> steps_;
  std::vector<double> cells_;
  std::size_t slots_ = 0;
  std::size_t constant_end_ = 0;
};

// What works a step on single numbers.
using StepWork = double (*)(const Step*, double, WorkState*);
StepWork WorkOf(const Step& step);

}  // namespace lorv
