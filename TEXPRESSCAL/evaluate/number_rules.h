#pragma once

#include <cmath>

#include "TEXPRESSCAL/language/expression_node.h"

// What the operators and functions make of numbers: the rules that every way of evaluating a formula shares,
// so that all of them agree to the last bit.
//
// They are always inlined: code for several generations of processors uses them, and a copy compiled for one
// must not be called by another.
namespace lorv {

// "<" and ">" see numbers this close as equal; the other comparisons are exact.
constexpr double kTolerance = 1e-9;

// A quotient by zero shows the dividend, negated, over this.
constexpr double kZeroStandIn = 0.001;

[[gnu::always_inline]] inline double Quotient(double left, double right) {
  return right == 0 ? -left / kZeroStandIn : left / right;
}

[[gnu::always_inline]] inline bool IsLess(double left, double right) {
  return left - right <= -kTolerance;
}

// Whether a comparison holds, for two values in an order of their own.
template <class T>
bool Holds(unsigned short kind, T left, T right) {
  switch (kind) {
    case kGreaterEqual:
      return left >= right;
    case kLessEqual:
      return left <= right;
    case kNotEqual:
      return left != right;
    case kLess:
      return left < right;
    case kGreater:
      return left > right;
    default:
      return left == right;
  }
}

// The same for the numbers of a formula.
inline bool NumbersCompare(unsigned short kind, double left, double right) {
  if (kind == kLess) return IsLess(left, right);
  if (kind == kGreater) return IsLess(right, left);
  return Holds(kind, left, right);
}

// Only an exact 1 passes for true where truths are joined.
[[gnu::always_inline]] inline bool IsTruth(double number) {
  return number == 1.0;
}

// MAX and MIN compare from the last argument to the first: which of `number` and the best so far stays.
[[gnu::always_inline]] inline double Larger(double number, double best) {
  return number > best ? number : best;
}
[[gnu::always_inline]] inline double Smaller(double number, double best) {
  return best <= number ? best : number;
}

}  // namespace lorv
