#include "TEXPRESSCAL/evaluate/evaluator.h"

#include <cmath>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/evaluate/number_rules.h"
#include "TEXPRESSCAL/language/operators.h"

// Evaluates a tree: the plain way, which all others must equal to the last bit and to the same error.
// Divisors and exponents are evaluated before what stands on their left, which shows in errors: the last one
// written is the one that counts. Trees may be a million nodes deep to the left, so chains are walked and not
// recursed into.

namespace lorv {
namespace {

Operand NumberOperand(double number) {
  return {number, nullptr};
}

TextView TextOf(const ExprNode* leaf) {
  return {leaf->text, leaf->length};
}

// Whether a node may turn out a text: one in quotes, or a sum of such.
bool MayBeText(const ExprNode* node) {
  for (; node != nullptr && node->kind == kAdd; node = node->left) {
    if (node->right == nullptr || (node->right->kind != kText && node->right->kind != kAdd)) return false;
  }
  return node != nullptr && node->kind == kText;
}

}  // namespace

double Evaluator::EvaluateNumber(const ExprNode* node, int levels) {
  // Too deep for recursion: the walk with its own stack takes over, with the same order and errors.
  if (node == nullptr || levels <= 0) return NumberOf(node);
  --levels;
  const auto number = [this, levels](const ExprNode* operand) { return Number(operand, levels); };
  switch (node->kind) {
    case kNumber:
      return node->value;
    // Texts count 0, and so does their sum.
    case kAdd: {
      const double left = number(node->left);
      return left + number(node->right);
    }
    case kSubtract: {
      const double left = number(node->left);
      return left - number(node->right);
    }
    case kMultiply: {
      const double left = number(node->left);
      return left * number(node->right);
    }
    case kDivide:
      return EvaluateQuotient(node, levels);
    case kPower: {
      const double right = number(node->right);
      return arithmetic::Power(number(node->left), right);
    }
    case kAnd:
      return IsTruth(number(node->left)) && IsTruth(number(node->right)) ? 1 : 0;
    case kOr:
      return IsTruth(number(node->left)) || IsTruth(number(node->right)) ? 1 : 0;
    case kLess:
    case kGreater:
    case kGreaterEqual:
    case kLessEqual:
    case kNotEqual:
    case kEqual:
      return EvaluateComparison(node, levels);
    case kNegate:
      return EvaluateNegation(node, levels);
    case kAbsolute:
      return std::fabs(number(node->left));
    case kNot:
      return number(node->right) == 0 ? 1 : 0;
    default:
      return node->kind >= kSin && node->kind <= kFind ? Function(node, levels) : NumberOf(node);
  }
}

// The divisor first: its errors come before the dividend's, and the last error is the one that counts.
double Evaluator::EvaluateQuotient(const ExprNode* node, int levels) {
  const double right = Number(node->right, levels);
  if (right == 0) SetError(kDivisionByZero, node);
  return Quotient(Number(node->left, levels), right);
}

// Two texts are compared as texts, which the plain recursion knows nothing of.
double Evaluator::EvaluateComparison(const ExprNode* node, int levels) {
  if (MayBeText(node->left) && MayBeText(node->right)) return NumberOf(node);
  const double left = Number(node->left, levels);
  return NumbersCompare(node->kind, left, Number(node->right, levels)) ? 1 : 0;
}

// A sequence of signs may be as long as the text.
double Evaluator::EvaluateNegation(const ExprNode* node, int levels) {
  bool negative = true;
  const ExprNode* inner = node->right;
  for (; inner != nullptr && inner->kind == kNegate; inner = inner->right) negative = !negative;
  const double value = Number(inner, levels);
  return negative ? -value : value;
}

// Down the chain of left operands first, then back up, so that a chain of any length needs no recursion.
Operand Evaluator::Evaluate(const ExprNode* node) {
  const std::size_t base = pending_count_;
  for (; node != nullptr && UsesLeftOperand(node->kind); node = node->left) Push(node);
  Operand value = Single(node);
  while (pending_count_ > base) {
    --pending_count_;
    const std::size_t at = pending_count_;
    const Pending pending = at < pending_.size() ? pending_[at] : more_pending_[at - pending_.size()];
    if (at >= pending_.size()) more_pending_.pop_back();
    value = Join(pending, value);
  }
  return value;
}

// What must be evaluated before the left operand is evaluated here.
void Evaluator::Push(const ExprNode* node) {
  Pending pending{node, 0};
  if (node->kind == kDivide || node->kind == kPower) {
    pending.right = NumberOf(node->right);
    if (node->kind == kDivide && pending.right == 0) SetError(kDivisionByZero, node);
  }
  // The first few operators of a chain need no memory from the heap.
  if (pending_count_ < pending_.size()) {
    pending_[pending_count_] = pending;
  } else {
    more_pending_.push_back(pending);
  }
  ++pending_count_;
}

// The left operand is known; the right one is evaluated now unless it came first.
Operand Evaluator::Join(const Pending& pending, Operand left) {
  const ExprNode* node = pending.node;
  switch (node->kind) {
    case kDivide:
      return NumberOperand(Quotient(left.number, pending.right));
    case kPower:
      return NumberOperand(arithmetic::Power(left.number, pending.right));
    case kMultiply:
      return NumberOperand(left.number * NumberOf(node->right));
    case kSubtract:
      return NumberOperand(left.number - NumberOf(node->right));
    case kAdd:
      return Sum(left, Evaluate(node->right));
    case kAnd:
      return NumberOperand(IsTruth(left.number) && IsTruth(NumberOf(node->right)) ? 1 : 0);
    case kOr:
      return NumberOperand(IsTruth(left.number) || IsTruth(NumberOf(node->right)) ? 1 : 0);
    default:
      return NumberOperand(Compare(node->kind, left, Evaluate(node->right)) ? 1 : 0);
  }
}

// A node that begins no chain.
Operand Evaluator::Single(const ExprNode* node) {
  if (node == nullptr || (node->kind == kText && node->text == nullptr)) {
    SetError(kMissingOperand, node);
    return NumberOperand(0);
  }
  switch (node->kind) {
    case kNumber:
      return NumberOperand(node->value);
    case kText:
      return {0, node};
    case kAbsolute:
      return NumberOperand(std::fabs(NumberOf(node->left)));
    // The left operand is not evaluated.
    case kNot:
      return NumberOperand(NumberOf(node->right) == 0 ? 1 : 0);
    case kNegate:
      return NumberOperand(EvaluateNegation(node, 0));
    default:
      return node->kind >= kSin && node->kind <= kFind ? NumberOperand(Function(node, 0)) : Variable(node);
  }
}

// The parser builds no such node; trees that callers make may hold one.
Operand Evaluator::Variable(const ExprNode* node) {
  double value = 0;
  if (variables_ == nullptr || node->text == nullptr || !variables_->FindVariable(node->text, value)) {
    SetError(kUnknownVariable, node);
    return NumberOperand(0);
  }
  return NumberOperand(value);
}

Operand Evaluator::Sum(Operand left, Operand right) {
  if (left.text == nullptr || right.text == nullptr) return NumberOperand(left.number + right.number);
  const TextView tail = TextOf(right.text);
  // A text that was joined just before grows on, so that a long chain costs no more than its length.
  if (joined_.empty() || left.text != &joined_.back()->node) {
    joined_.push_back(std::make_unique<JoinedText>());
    joined_.back()->text = TextOf(left.text);
    joined_.back()->node.kind = kText;
  }
  JoinedText& joined = *joined_.back();
  joined.text.append(tail);
  joined.node.text = joined.text.c_str();
  joined.node.length = static_cast<unsigned int>(joined.text.size());
  return {0, &joined.node};
}

// A text beside a number counts 0.
bool Evaluator::Compare(unsigned short kind, Operand left, Operand right) const {
  if (left.text != nullptr && right.text != nullptr) {
    return Holds(kind, CompareWithoutCase(TextOf(left.text), TextOf(right.text)), 0);
  }
  return NumbersCompare(kind, left.number, right.number);
}

}  // namespace lorv
