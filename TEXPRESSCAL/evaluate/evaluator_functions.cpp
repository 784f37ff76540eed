#include <cmath>
#include <vector>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/arithmetic/square_root.h"
#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/evaluate/number_rules.h"

// Calls of functions in a tree. What a function of one number gives stands in number_functions.h, shared by
// all ways of evaluating; here is which arguments are evaluated, in which order, and which error a call
// leaves.

namespace lorv {

// Functions that use one argument leave the others alone, errors included. A missing one counts 0 and is
// reported behind whatever else the call might report.
double Evaluator::Function(const ExprNode* call, int levels) {
  switch (call->kind) {
    case kMax:
    case kMin:
      return Extreme(call, levels);
    case kIif:
      return Choose(call, levels);
    case kFind:
      return FindInText(call);
    // The length of any text is 0, and the argument is not evaluated: formulas in use rely on it.
    case kLen:
      return 0;
    default:
      break;
  }
  const double x = Number(call->left, levels);
  if (call->left == nullptr) SetError(kMissingOperand, call);
  if (call->kind != kSqrt && call->kind != kLog) {
    const double result = NumberFunction(call->kind, x);
    // What is too large for 32 bits gives the lowest number, as it always did; only the report of doubts
    // mentions it.
    const bool is_lowest = result == -kEndOf32Bits && GoesThrough32Bits(call->kind);
    if (is_lowest && !(x > -kEndOf32Bits - 1 && x < -kEndOf32Bits + 1)) overflow_node_ = call;
    return result;
  }
  if (call->kind == kSqrt ? x >= 0 : x > 0)
    return call->kind == kSqrt ? arithmetic::SquareRoot(x) : arithmetic::Logarithm(x);
  SetError(kOutsideDomain, call);
  return 0;
}

// The arguments are evaluated in order and compared from the last to the first.
double Evaluator::Extreme(const ExprNode* call, int levels) {
  double v = Number(call->left, levels);
  if (call->right == nullptr) return v;
  if (call->right->kind == kArgument && call->right->right == nullptr) {
    const double second = Number(call->right->left, levels);
    return call->kind == kMax ? Larger(v, second) : Smaller(v, second);
  }
  // Few calls have more arguments than these, and those take a block from the heap.
  std::array<double, 8> first;
  std::vector<double> more;
  std::size_t count = 0;
  const auto put = [&](double value) {
    if (count < first.size()) {
      first[count] = value;
    } else {
      more.push_back(value);
    }
    ++count;
  };
  put(v);
  for (const ExprNode* link = call->right; link != nullptr; link = link->right) {
    if (link->kind != kArgument) {
      SetError(kMalformedArguments, call);
      put(0);
      break;
    }
    put(Number(link->left, levels));
  }
  const auto get = [&](std::size_t i) { return i < first.size() ? first[i] : more[i - first.size()]; };
  double result = get(--count);
  while (count > 0) {
    v = get(--count);
    result = call->kind == kMax ? Larger(v, result) : Smaller(v, result);
  }
  return result;
}

// Only the chosen branch is evaluated. The test is "greater than 0", not the exact 1 of the joins.
double Evaluator::Choose(const ExprNode* call, int levels) {
  const ExprNode* yes = call->right;
  const ExprNode* no = yes == nullptr ? nullptr : yes->right;
  if (no == nullptr || yes->kind != kArgument || no->kind != kArgument || no->right != nullptr) {
    SetError(kMalformedArguments, call);
    return 0;
  }
  const bool holds = Number(call->left, levels) > 0;
  return Number(holds ? yes->left : no->left, levels);
}

// One-based place of the second text in the first; 0 where there is none or either is a number.
double Evaluator::FindInText(const ExprNode* call) {
  const Operand whole = Evaluate(call->left);
  const Operand part = Evaluate(call->right == nullptr ? nullptr : call->right->left);
  if (whole.text == nullptr || part.text == nullptr) return 0;
  const TextView text(whole.text->text, whole.text->length);
  const std::size_t at = text.find(TextView(part.text->text, part.text->length));
  return at == TextView::npos ? 0 : static_cast<double>(at + 1);
}

}  // namespace lorv
