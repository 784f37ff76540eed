#include "TEXPRESSCAL/arithmetic/logarithm.h"

#include <limits>

#include "TEXPRESSCAL/arithmetic/fraction_table.h"
#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/arithmetic/logarithm_table.h"

// ln(x) = k * ln(2) + ln(c) + ln(1 + r) with x = 2^k * c * (1 + r): ln(c) from a table, the last, with |r|
// below 2^-7, from a series. Beside 1, c is 1 and k is 0, so that nothing is lost where the logarithm is
// small.
namespace lorv::arithmetic {
namespace {

// ln(1 + r) = 2 * atanh(r / (2 + r)).
Pair LongSeries(Pair r) {
  const Pair s = Over(r, Plus(r, 2.0));
  const Pair square = Times(s, s);
  constexpr double kTail[] = {1.0 / 7, 1.0 / 9, 1.0 / 11, 1.0 / 13, 1.0 / 15};
  double tail = 0;
  for (int at = 4; at >= 0; --at) tail = tail * square.high + kTail[at];
  Pair sum = Plus(kOneFifth, tail * square.high);
  sum = Plus(Times(sum, square), kOneThird);
  sum = Plus(Times(Times(sum, square), s), s);
  return {2 * sum.high, 2 * sum.low};
}

}  // namespace

Pair LongLogarithm(double x) {
  const PartedNumber parted = PartOfNumber(x);
  const LogarithmRow& row = kLogarithms[parted.index];
  Pair sum = LongSeries(parted.r);
  // From the smallest part to the largest, so that the sum rounds as late as it can.
  sum = Plus(sum, parted.exponent * kLogarithmOfTwo.low + row.low);
  sum = Plus(sum, Plus(Product(parted.exponent, kLogarithmOfTwo.middle), row.middle));
  return Plus(sum, parted.exponent * kLogarithmOfTwo.high + row.high);
}

double Logarithm(double x) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (!(x > 0)) {
    // The evaluator asks for numbers above 0 only; the function itself has its limits.
    if (x == 0) return -kInfinity;
    return x != x ? x + x : ProcessorsNan();
  }
  if (x == kInfinity) return x;
  const QuickLogarithmResult quick = QuickLogarithm(x);
  double rounded = 0;
  if (RoundsSurely(quick.value, quick.error, rounded)) return rounded;
  return LongLogarithm(x).high;
}

}  // namespace lorv::arithmetic
