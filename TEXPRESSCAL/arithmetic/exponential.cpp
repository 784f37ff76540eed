#include "TEXPRESSCAL/arithmetic/exponential.h"

#include <limits>

#include "TEXPRESSCAL/arithmetic/exponential_table.h"
#include "TEXPRESSCAL/arithmetic/fraction_table.h"
#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/arithmetic/scaled_result.h"

// e^x = 2^m * 2^(i/128) * e^r: the second factor from a table, the last, with |r| below 0.0028, from a
// series. The quick way stands in the header, as powers inline it; here is the long one, for arguments where
// its error could change the rounding. Scaling by 2^m comes last and once, since results below the smallest
// normal number must not be rounded twice.

namespace lorv::arithmetic {
namespace {

// e^r - 1 for a pair r.
Pair LongSeries(Pair r) {
  constexpr double kTail[] = {1.0 / 720,    1.0 / 5040,    1.0 / 40320,
                              1.0 / 362880, 1.0 / 3628800, 1.0 / 39916800};
  double tail = 0;
  for (int at = 5; at >= 0; --at) tail = tail * r.high + kTail[at];
  Pair sum = {tail * r.high, 0};
  constexpr Pair kHead[] = {kOneOf120, kOneOf24, kOneSixth};
  for (const Pair& term : kHead) sum = Times(Plus(sum, term), r);
  sum = Times(Plus(sum, 0.5), r);
  return Times(Plus(sum, 1.0), r);
}

}  // namespace

ScaledPair LongExponential(Pair x) {
  const PartedPower parted = PartOfPower(x.high);
  // The step is held in three parts: the first product is exact, so no bit of x is lost when they nearly
  // cancel.
  const Pair first = Sum(x.high - parted.count * kStepHigh, -parted.count * kStepMiddle);
  const Pair r = Plus(Plus(first, x.low), Negated(Product(parted.count, kStepLow)));
  const Pair step = kPowersOfTwo[parted.index];
  const Pair rest = Plus(Times(step, LongSeries(r)), step.low);
  // The sum of three parts, the lower two rounded to odd.
  const Pair sum = Sum(step.high, rest.high);
  return {FastSum(sum.high, OddSum(sum.low, rest.low)), parted.exponent};
}

double Exponential(double x) {
  // Written so that not-a-number comes here, too; it keeps its own bits.
  if (!(x > kAllVanishBelow)) return x != x ? x + x : 0;
  if (x > kAllOverflowAbove) return std::numeric_limits<double>::infinity();
  const ScaledPair quick = QuickExponential({x, 0});
  double rounded = 0;
  if (ScalesPlainly(quick.exponent) &&
      RoundsSurely(quick.value, quick.value.high * kQuickExponentialError, rounded)) {
    return ScaledPlainly(rounded, quick.exponent);
  }
  const ScaledPair full = LongExponential({x, 0});
  return Scaled(full.value, full.exponent);
}

}  // namespace lorv::arithmetic
