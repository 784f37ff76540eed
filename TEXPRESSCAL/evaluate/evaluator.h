#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/language/expression_node.h"
#include "framework/native/working_size.h"
#include "framework/text/text_compare.h"

namespace lorv {

// An intermediate value: a number, or a text that some node holds. A text counts as the number 0.
struct Operand {
  double number;
  const ExprNode* text;  // null: a number
};

// What a variable node asks for the value of a name. The parser builds no such node; trees from elsewhere
// may.
class VariableSource {
 public:
  virtual bool FindVariable(LPCTSTR name, double& value) const = 0;

 protected:
  ~VariableSource() = default;
};

// Evaluates one tree: the plain way, which defines what every other way must give. Few nodes are deep and few
// are texts, so numbers are evaluated by plain recursion as long as it has `levels`. What lies deeper, and
// all texts, take the other way: chains of operators that lean to the left, the only shape that can be a
// million nodes deep, are walked with a stack of its own, and only brackets and calls recurse. Both ways
// evaluate operands in the same order and write the same errors.
class Evaluator {
 public:
  // `variables` may be null: every variable is then unknown.
  explicit Evaluator(const VariableSource* variables) : variables_(variables) {}

  // The tree as a number; a text counts 0.
  double EvaluateAsNumber(const ExprNode* root) { return Number(root, kRecursionLevels); }
  Operand Evaluate(const ExprNode* node);
  int Error() const { return error_; }
  // The node whose evaluation gave the error; null for a missing operand that has no node.
  const ExprNode* ErrorNode() const { return error_node_; }
  // The last call that cut or rounded a number beyond 32 bits, which is no error; or null.
  const ExprNode* OverflowNode() const { return overflow_node_; }

 private:
  struct Pending {
    const ExprNode* node;
    double right;  // of a quotient or power: their right operand comes first
  };

  void SetError(int error, const ExprNode* node) {
    error_ = error;
    error_node_ = node;
  }
  // Levels of a tree that are evaluated by plain recursion.
  static constexpr int kRecursionLevels = static_cast<int>(WorkingSize(250, 2));

  double Number(const ExprNode* node, int levels) {
    return node != nullptr && node->kind == kNumber ? node->value : EvaluateNumber(node, levels);
  }
  double EvaluateNumber(const ExprNode* node, int levels);
  double EvaluateQuotient(const ExprNode* node, int levels);
  double EvaluateComparison(const ExprNode* node, int levels);
  double EvaluateNegation(const ExprNode* node, int levels);
  double NumberOf(const ExprNode* node) { return Evaluate(node).number; }
  void Push(const ExprNode* node);
  Operand Join(const Pending& pending, Operand left);
  Operand Single(const ExprNode* node);
  Operand Variable(const ExprNode* node);
  Operand Sum(Operand left, Operand right);
  bool Compare(unsigned short kind, Operand left, Operand right) const;

  double Function(const ExprNode* call, int levels);
  double Extreme(const ExprNode* call, int levels);
  double Choose(const ExprNode* call, int levels);
  double FindInText(const ExprNode* call);

  const VariableSource* variables_;
  int error_ = kNoError;
  const ExprNode* error_node_ = nullptr;
  const ExprNode* overflow_node_ = nullptr;
  // Operators whose left operand is being evaluated. The first few need no heap.
  std::size_t pending_count_ = 0;
  std::array<Pending, WorkingSize(24, 1)> pending_;
  std::vector<Pending> more_pending_;
  // Texts that were joined on the way, with the nodes that stand for them: few formulas join any.
  struct JoinedText {
    std::basic_string<TCHAR> text;
    ExprNode node;
  };
  std::vector<std::unique_ptr<JoinedText>> joined_;
};

}  // namespace lorv
