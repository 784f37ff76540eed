#include "TEXPRESSCAL/compiled/compiler.h"

#include <algorithm>
#include <bit>
#include <map>

#include "TEXPRESSCAL/language/operators.h"

// Turns a tree of numbers into the steps of a program: constants folded, temporaries in numbered cells,
// branches as jumps. It is used for formulas that are set again and again, and for rows. The steps stand in
// the order in which the tree is evaluated and nothing that can fail is folded, as the last error written is
// the one that counts.

namespace lorv {

// Walks a tree once and writes the steps. Recursion is bounded by the length of a formula.
class Compiler {
 public:
  Compiler(FormulaProgram& program, const FormulaProgram::SlotOf& slot_of)
      : program_(program), slot_of_(slot_of) {}

  bool Make(const ExprNode* root) {
    Collect(root);
    // Cells: variables, then constants, then temporaries. Only the last are written while a program runs.
    program_.constant_end_ = program_.cells_.size();
    next_save_ = program_.constant_end_;
    program_.cells_.resize(next_save_);
    if (good_) Write(root);
    Put(StepKind::kEnd, 0);
    return good_ && program_.steps_.size() <= FormulaProgram::kMaxSteps;
  }

 private:
  void Collect(const ExprNode* node);
  void CollectArguments(const ExprNode* call);
  void Fold(const ExprNode* node);
  void AddConstant(const ExprNode* node, double value);
  const double* ConstantAt(const ExprNode* node) const;

  void Write(const ExprNode* node);
  void WriteOperator(const ExprNode* node);
  void WriteBoth(const ExprNode* node, StepKind with_right, StepKind with_left);
  void WriteQuotient(const ExprNode* node);
  void WriteSum(const ExprNode* node);
  void WriteJoin(const ExprNode* node);
  void WriteExtreme(const ExprNode* call);
  void WriteChoice(const ExprNode* call);
  void WriteCall(const ExprNode* node);
  void Put(StepKind kind, std::size_t cell, std::size_t other = 0, unsigned rule = 0);
  // From the step at `from` on, to behind the last one written.
  void PointBehind(std::size_t from) {
    program_.steps_[from].further = static_cast<std::uint16_t>(program_.steps_.size() - from);
  }
  std::size_t OpenCell() {
    const std::size_t cell = next_save_++;
    if (program_.cells_.size() < next_save_) program_.cells_.resize(next_save_);
    good_ = good_ && next_save_ <= FormulaProgram::kMaxCells;
    return cell;
  }
  void CloseCell() { --next_save_; }

  // A variable, or what is the same number for all values of the variables.
  bool IsLeaf(const ExprNode* node) const { return node->kind == kNumber || constant_nodes_.contains(node); }
  std::size_t CellOf(const ExprNode* leaf) const;
  bool MayFail(const ExprNode* node) const;

  FormulaProgram& program_;
  const FormulaProgram::SlotOf& slot_of_;
  std::map<std::uint64_t, std::size_t> constants_;  // their cells, by the number's bits
  std::map<const ExprNode*, double> constant_nodes_;
  std::size_t next_save_ = 0;
  bool good_ = true;
};

void Compiler::Put(StepKind kind, std::size_t cell, std::size_t other, unsigned rule) {
  const auto narrow = [](std::size_t number) { return static_cast<std::uint16_t>(number); };
  Step step{kind, static_cast<std::uint8_t>(rule), narrow(cell), narrow(other),
            MayLoad(kind) ? Step::kNoLoad : std::uint16_t{0}};
  std::vector<Step>& steps = program_.steps_;
  // A load in front is made a part of this step: jumps to the load arrive here.
  if (MayLoad(kind) && !steps.empty() && steps.back().kind == StepKind::kLoad) {
    step.further = steps.back().cell;
    steps.pop_back();
  }
  steps.push_back(step);
}

// Equal numbers share a cell. They are distinguished by their bits: 0 and -0 are equal and not the same.
void Compiler::AddConstant(const ExprNode* node, double value) {
  constant_nodes_[node] = value;
  if (constants_.try_emplace(std::bit_cast<std::uint64_t>(value), program_.cells_.size()).second)
    program_.cells_.push_back(value);
}

const double* Compiler::ConstantAt(const ExprNode* node) const {
  const auto at = constant_nodes_.find(node);
  return at == constant_nodes_.end() ? nullptr : &at->second;
}

// Folds what does not depend on any variable, where that cannot fail.
void Compiler::Fold(const ExprNode* node) {
  const double* const right = ConstantAt(node->right);
  if (node->kind == kNegate && right != nullptr) AddConstant(node, -*right);
  const double* const left = node->left == nullptr ? nullptr : ConstantAt(node->left);
  if (left == nullptr || right == nullptr) return;
  switch (node->kind) {
    case kAdd:
      return AddConstant(node, *left + *right);
    case kSubtract:
      return AddConstant(node, *left - *right);
    case kMultiply:
      return AddConstant(node, *left * *right);
    case kDivide:
      // A division by zero reports its error each time, so it stays a step.
      if (*right != 0) AddConstant(node, *left / *right);
      return;
    default:
      return;
  }
}

// Gathers the constants, and finds out whether the tree is one of numbers with every operand in its place.
void Compiler::Collect(const ExprNode* node) {
  // A missing operand is an error of its own kind, which the tree reports and no step does.
  if (node == nullptr || program_.cells_.size() >= FormulaProgram::kMaxCells) {
    good_ = false;
    return;
  }
  if (UsesLeftOperand(node->kind)) {
    Collect(node->left);
    Collect(node->right);
    Fold(node);
  } else if (node->kind == kNumber) {
    if (slot_of_(node) < 0) AddConstant(node, node->value);
  } else if (node->kind == kLen) {
    AddConstant(node, 0);  // the length of any text, and the argument is not evaluated
  } else if (node->kind == kNegate || node->kind == kNot) {
    Collect(node->right);
    if (node->kind == kNegate) Fold(node);
  } else if (node->kind == kAbsolute) {
    Collect(node->left);
  } else if (node->kind >= kSin && node->kind < kFind) {
    CollectArguments(node);
  } else {
    good_ = false;
  }
}

// A call with arguments in the wrong number never comes from the parser, but trees may come from elsewhere.
void Compiler::CollectArguments(const ExprNode* call) {
  Collect(call->left);
  // Other functions take any number of arguments and use the first alone.
  if (call->kind != kMax && call->kind != kMin && call->kind != kIif) return;
  int count = 1;
  for (const ExprNode* link = call->right; link != nullptr; link = link->right, ++count) {
    if (link->kind != kArgument) good_ = false;
    Collect(link->left);
  }
  if (call->kind == kIif && count != 3) good_ = false;
}

// Only of leaves.
std::size_t Compiler::CellOf(const ExprNode* leaf) const {
  if (const double* const value = ConstantAt(leaf))
    return constants_.at(std::bit_cast<std::uint64_t>(*value));
  return static_cast<std::size_t>(slot_of_(leaf));
}

// Whether evaluating a tree can write an error.
bool Compiler::MayFail(const ExprNode* node) const {
  if (node == nullptr || IsLeaf(node)) return false;
  if (node->kind == kDivide || node->kind == kSqrt || node->kind == kLog) return true;
  return MayFail(node->left) || MayFail(node->right);
}

// What a tree gives stands in the accumulator behind its steps; nothing else but the cells opened meanwhile
// has changed.
void Compiler::Write(const ExprNode* node) {
  if (!good_) return;
  if (IsLeaf(node)) {
    Put(StepKind::kLoad, CellOf(node));
  } else if (UsesLeftOperand(node->kind)) {
    WriteOperator(node);
  } else {
    WriteCall(node);
  }
}

void Compiler::WriteOperator(const ExprNode* node) {
  switch (node->kind) {
    case kAdd:
    case kSubtract:
      return WriteSum(node);
    case kMultiply:
      return WriteBoth(node, StepKind::kMultiply, StepKind::kMultiply);
    case kDivide:
    case kPower:
      return WriteQuotient(node);
    case kAnd:
    case kOr:
      return WriteJoin(node);
    default:
      break;
  }
  // With the operands exchanged, "less" is "greater".
  static const std::map<unsigned short, std::pair<StepKind, StepKind>> kComparisons = {
      {kLess, {StepKind::kLess, StepKind::kGreater}},
      {kGreater, {StepKind::kGreater, StepKind::kLess}},
      {kLessEqual, {StepKind::kLessEqual, StepKind::kGreaterEqual}},
      {kGreaterEqual, {StepKind::kGreaterEqual, StepKind::kLessEqual}},
      {kEqual, {StepKind::kEqual, StepKind::kEqual}},
      {kNotEqual, {StepKind::kNotEqual, StepKind::kNotEqual}}};
  const auto& [with_right, with_left] = kComparisons.at(node->kind);
  WriteBoth(node, with_right, with_left);
}

// Two operands that are evaluated from left to right. A leaf never fails and never changes, so it can wait in
// its own cell for the other one; `with_left` joins a left operand in a cell with the right one in the
// accumulator.
void Compiler::WriteBoth(const ExprNode* node, StepKind with_right, StepKind with_left) {
  if (IsLeaf(node->right)) {
    Write(node->left);
    Put(with_right, CellOf(node->right));
    return;
  }
  if (IsLeaf(node->left)) {
    Write(node->right);
    Put(with_left, CellOf(node->left));
    return;
  }
  Write(node->left);
  const std::size_t saved = OpenCell();
  Put(StepKind::kSave, saved);
  Write(node->right);
  Put(with_left, saved);
  CloseCell();
}

// "+ a * b" with two leaves is one step: the most common term of a quantity.
void Compiler::WriteSum(const ExprNode* node) {
  const bool adds = node->kind == kAdd;
  const ExprNode* right = node->right;
  if (right->kind == kMultiply && !IsLeaf(right) && IsLeaf(right->left) && IsLeaf(right->right)) {
    Write(node->left);
    Put(adds ? StepKind::kAddProduct : StepKind::kSubtractProduct, CellOf(right->left), CellOf(right->right));
    return;
  }
  WriteBoth(node, adds ? StepKind::kAdd : StepKind::kSubtract,
            adds ? StepKind::kAdd : StepKind::kSubtractFrom);
}

// The right operand is evaluated first, and a divisor of 0 is reported before what the dividend may report.
void Compiler::WriteQuotient(const ExprNode* node) {
  const bool reported_before = node->kind == kDivide && MayFail(node->left);
  const StepKind join = node->kind == kPower ? StepKind::kPower
                        : reported_before    ? StepKind::kDivideSilently
                                             : StepKind::kDivide;
  if (IsLeaf(node->right)) {
    const std::size_t cell = CellOf(node->right);
    if (reported_before) Put(StepKind::kCheckDivisor, cell);
    Write(node->left);
    Put(join, cell);
    return;
  }
  Write(node->right);
  const std::size_t saved = OpenCell();
  Put(StepKind::kSave, saved);
  if (reported_before) Put(StepKind::kCheckDivisor, saved);
  Write(node->left);
  Put(join, saved);
  CloseCell();
}

// The right side is evaluated only where the left one does not decide.
void Compiler::WriteJoin(const ExprNode* node) {
  Write(node->left);
  const std::size_t saved = OpenCell();
  const std::size_t begin = program_.steps_.size();
  Put(node->kind == kAnd ? StepKind::kAnd : StepKind::kOr, saved);
  Write(node->right);
  Put(StepKind::kEndJoin, 0, saved, node->kind);
  PointBehind(begin);
  CloseCell();
}

// All arguments are evaluated first, as the tree does it, and compared from the last to the first. Two
// arguments, the usual case, need no cells.
void Compiler::WriteExtreme(const ExprNode* call) {
  const StepKind last = call->kind == kMax ? StepKind::kLarger : StepKind::kSmaller;
  const StepKind first = call->kind == kMax ? StepKind::kLargerFirst : StepKind::kSmallerFirst;
  const ExprNode* link = call->right;
  if (link == nullptr) return Write(call->left);
  if (link->right == nullptr) {
    // A node of two operands for the moment, for the rule that joins two operands.
    const ExprNode both{call->left, link->left, call->kind, {0}, {0}};
    return WriteBoth(&both, first, last);
  }
  Write(call->left);
  int saved = 0;
  for (; link != nullptr; link = link->right, ++saved) {
    Put(StepKind::kSave, OpenCell());
    Write(link->left);
  }
  for (; saved > 0; --saved) {
    Put(last, next_save_ - 1);
    CloseCell();
  }
}

// Both branches leave their value in the accumulator. The cell of the first is used by the loops over blocks
// alone, where some rows take one branch and some the other.
void Compiler::WriteChoice(const ExprNode* call) {
  Write(call->left);
  const std::size_t test = OpenCell();
  const std::size_t begin = program_.steps_.size();
  Put(StepKind::kIf, test);
  Write(call->right->left);
  const std::size_t yes = OpenCell();
  const std::size_t middle = program_.steps_.size();
  Put(StepKind::kElse, yes, test);
  PointBehind(begin);
  Write(call->right->right->left);
  Put(StepKind::kEndIf, yes, test);
  PointBehind(middle);
  CloseCell();
  CloseCell();
}

void Compiler::WriteCall(const ExprNode* node) {
  switch (node->kind) {
    case kMax:
    case kMin:
      return WriteExtreme(node);
    case kIif:
      return WriteChoice(node);
    default:
      break;
  }
  Write(node->kind == kNegate || node->kind == kNot ? node->right : node->left);
  switch (node->kind) {
    case kNegate:
      Put(StepKind::kNegate, 0);
      break;
    case kNot:
      Put(StepKind::kNot, 0);
      break;
    case kAbsolute:
    case kAbs:
      Put(StepKind::kAbsolute, 0);
      break;
    case kSqrt:
      Put(StepKind::kSqrt, 0);
      break;
    case kLog:
      Put(StepKind::kLog, 0);
      break;
    default:
      Put(StepKind::kFunction, 0, 0, node->kind);
  }
}

// The fused steps are made last: they are read off the finished steps.
bool FormulaProgram::Make(const ExprNode* root, std::size_t slots, const SlotOf& slot_of) {
  slots_ = slots;
  steps_.clear();
  cells_.assign(slots, 0.0);
  Compiler maker(*this, slot_of);
  if (slots > kMaxCells || !maker.Make(root)) return false;
  fused_steps_ = FuseSteps(steps_);
  return true;
}

}  // namespace lorv
