#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

#include "TEXPRESSCAL/arithmetic/square_root.h"

// Numbers of some 106 bits as unevaluated sums of two doubles, from plain double operations alone: no fused
// multiply-add and nothing that one processor, compiler or system does differently from another.
//
// A pair is normal when `high` is the double nearest to the sum. Every function here gives a normal pair for
// normal arguments; relative errors are below 2^-102. Magnitudes must stay between 2^-400 and 2^400 where
// products are taken, so that no part overflows or loses bits at the lower end.
namespace lorv::arithmetic {

struct Pair {
  double high;
  double low;
};

// A number in three parts, for tables.
struct TripleRow {
  double high;
  double middle;
  double low;
};

// Added and taken away, it rounds a number below 2^51 to a whole.
constexpr double kNearestWhole = 6755399441055744.0;  // 1.5 * 2^52

constexpr int kMantissaBits = 52;
constexpr int kExponentBias = 1023;

inline std::uint64_t BitsOf(double x) {
  return std::bit_cast<std::uint64_t>(x);
}

// The NaN that the processor gives for 0 / 0.
constexpr double ProcessorsNan() {
  return std::bit_cast<double>(std::uint64_t{0xFFF8000000000000});
}

// For exponents of normal doubles.
constexpr double PowerOfTwo(int exponent) {
  return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + kExponentBias) << kMantissaBits);
}

// The exact sum of two doubles. `FastSum` asks for the larger magnitude first, or a first one of zero.
inline Pair FastSum(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}
inline Pair Sum(double a, double b) {
  const double sum = a + b;
  const double of_b = sum - a;
  return {sum, (a - (sum - of_b)) + (b - of_b)};
}

// Two halves of at most 26 bits.
inline Pair Halves(double a) {
  constexpr double kSplitter = 134217729.0;  // 2^27 + 1
  const double wide = a * kSplitter;
  const double high = wide - (wide - a);
  return {high, a - high};
}

// The exact product of two doubles.
inline Pair Product(double a, double b) {
  const double product = a * b;
  const Pair x = Halves(a);
  const Pair y = Halves(b);
  return {product, ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

// A normal pair of one whose first part is the larger.
inline Pair Normal(Pair a) {
  return FastSum(a.high, a.low);
}
inline Pair Negated(Pair a) {
  return {-a.high, -a.low};
}
inline Pair Plus(Pair a, double b) {
  const Pair sum = Sum(a.high, b);
  return FastSum(sum.high, sum.low + a.low);
}
inline Pair Plus(Pair a, Pair b) {
  const Pair high = Sum(a.high, b.high);
  const Pair low = Sum(a.low, b.low);
  const Pair first = FastSum(high.high, high.low + low.high);
  return FastSum(first.high, first.low + low.low);
}
inline Pair Times(Pair a, double b) {
  const Pair product = Product(a.high, b);
  return FastSum(product.high, product.low + a.low * b);
}
inline Pair Times(Pair a, Pair b) {
  const Pair product = Product(a.high, b.high);
  return FastSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}
inline Pair Over(Pair a, Pair b) {
  const double first = a.high / b.high;
  const Pair product = Product(first, b.high);
  const double rest = ((a.high - product.high) - product.low) + (a.low - first * b.low);
  return FastSum(first, rest / b.high);
}
// For positive numbers.
inline Pair Root(Pair a) {
  const double root = SquareRoot(a.high);
  const Pair rest = Plus(a, Negated(Product(root, root)));
  return FastSum(root, rest.high / (2 * root));
}

// a + b rounded to odd: a result that is not exact ends in a 1 bit, so that a later rounding to fewer bits
// falls as if it had seen the exact sum.
inline double OddSum(double a, double b) {
  const Pair sum = Sum(a, b);
  const std::uint64_t bits = BitsOf(sum.high);
  if (sum.low == 0 || (bits & 1) != 0) return sum.high;
  return std::bit_cast<double>((sum.low > 0) == (sum.high > 0) ? bits + 1 : bits - 1);
}

// a + b with one rounding, b being far smaller than a.
inline double RoundedSum(double a, Pair b) {
  const Pair sum = Sum(a, b.high);
  return sum.high + OddSum(sum.low, b.low);
}

// Whether every number within `error` of the sum of a pair, normal or not, rounds to the same double, which
// is then `rounded`. The error counts in what a sum of the second part and it may lose.
inline bool RoundsSurely(Pair a, double error, double& rounded) {
  rounded = a.high + (a.low + error);
  return rounded == a.high + (a.low - error);
}

}  // namespace lorv::arithmetic
