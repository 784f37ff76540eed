#include "TEXPRESSCAL/arithmetic/angle_reduction.h"
#include "TEXPRESSCAL/arithmetic/angle_table.h"
#include "TEXPRESSCAL/arithmetic/fraction_table.h"
#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"

// sin(a + r) = sin(a) * cos(r) + cos(a) * sin(r): the functions of the step a from a table, those of the rest
// r, which is at most 0.0062, from series. All three functions go through the same quarter of the circle, so
// they are right together or not at all. The quick sum is taken where its error bound leaves no doubt how it
// rounds.

namespace lorv::arithmetic {
namespace {

// Below this the sine, the tangent and their inverses round to the argument.
constexpr double kIsItsSine = PowerOfTwo(-27);

constexpr double kQuickError = PowerOfTwo(-64);
constexpr double kQuickTangentError = PowerOfTwo(-62);

// An angle whose sine is looked for, turned into the first quarter: the sine is that of a step plus `rest`,
// `negative` where the angle lies in the lower half of the circle.
struct InQuarter {
  const TripleRow* sine;    // of the step
  const TripleRow* cosine;  // of the step
  Pair rest;
  std::uint64_t sign;
};

constexpr std::uint64_t kSignBit = std::uint64_t{1} << 63;

double Flipped(double x, std::uint64_t sign) {
  return std::bit_cast<double>(BitsOf(x) ^ sign);
}

// sin(pi / 2 + a) = sin(pi / 2 - a), so that in the second and fourth quarter step and rest count backwards.
InQuarter TurnedBack(const ReducedAngle& angle, int quarters) {
  const int step = angle.step + quarters * kStepsOfQuarter;
  const int within = step & (kStepsOfQuarter - 1);
  const bool falls = (step & kStepsOfQuarter) != 0;
  const int at = falls ? kStepsOfQuarter - within : within;
  const std::uint64_t back = falls ? kSignBit : 0;
  return {&kSines[at],
          &kSines[kStepsOfQuarter - at],
          {Flipped(angle.rest.high, back), Flipped(angle.rest.low, back)},
          (step & (2 * kStepsOfQuarter)) != 0 ? kSignBit : 0};
}

// The sum of both parts is the sine, not counting its sign; the second is below a 64th of the first.
Pair QuickSine(const InQuarter& angle) {
  const TripleRow& sine = *angle.sine;
  const TripleRow& cosine = *angle.cosine;
  const double r = angle.rest.high;
  const double square = r * r;
  const double below_sine =
      square * (-1.0 / 6 + square * (1.0 / 120 - square * (1.0 / 5040)));  // sin(r) / r - 1
  const double below_cosine =
      square * (-0.5 + square * (1.0 / 24 + square * (-1.0 / 720 + square * (1.0 / 40320))));  // cos(r) - 1
  const double head = std::bit_cast<double>(BitsOf(r) & ~std::uint64_t{0x7FFFFFF});
  const double tail = (r - head) + angle.rest.low;
  // The first parts of the table and of r have 26 bits, so their product is exact; and but for the sine of no
  // step, which is 0, no sine is smaller than it.
  const Pair sum = FastSum(sine.high, cosine.high * head);
  const double low = (cosine.high * tail + cosine.middle * r) +
                     ((cosine.high + cosine.middle) * r) * below_sine +
                     ((sine.high + sine.middle) * below_cosine + sine.middle);
  return {sum.high, sum.low + low};
}

// sin(r) and cos(r) - 1 for a rest.
Pair LongSineSeries(Pair r, Pair square) {
  constexpr double kTail[] = {-1.0 / 5040, 1.0 / 362880, -1.0 / 39916800, 1.0 / 6227020800};
  double tail = 0;
  for (int at = 3; at >= 0; --at) tail = tail * square.high + kTail[at];
  Pair sum = Plus(kOneOf120, tail * square.high);
  sum = Plus(Times(sum, square), Negated(kOneSixth));
  return Plus(Times(Times(sum, square), r), r);
}
Pair LongCosineSeries(Pair square) {
  constexpr double kTail[] = {-1.0 / 720, 1.0 / 40320, -1.0 / 3628800, 1.0 / 479001600};
  double tail = 0;
  for (int at = 3; at >= 0; --at) tail = tail * square.high + kTail[at];
  const Pair sum = Plus(kOneOf24, tail * square.high);
  return Times(Plus(Times(sum, square), -0.5), square);
}

// Beside pi the sine of the step is 0 and all digits come from the rest: that is why the long reduction goes
// with the long sum.
Pair LongSine(const InQuarter& angle) {
  const Pair square = Times(angle.rest, angle.rest);
  const Pair sine = FastSum(angle.sine->high, angle.sine->middle);
  const Pair cosine = Plus(FastSum(angle.cosine->high, angle.cosine->middle), angle.cosine->low);
  Pair sum = Times(cosine, LongSineSeries(angle.rest, square));
  sum = Plus(sum, Times(Plus(sine, angle.sine->low), LongCosineSeries(square)));
  sum = Plus(sum, angle.sine->low);
  return Plus(sum, sine);
}

// The sine of an angle plus a number of quarters of the circle.
double SineAhead(double x, int quarters) {
  const InQuarter quick = TurnedBack(QuicklyReduced(x), quarters);
  const Pair value = QuickSine(quick);
  double rounded = 0;
  if (RoundsSurely(value, std::fabs(value.high) * kQuickError, rounded)) return Flipped(rounded, quick.sign);
  const InQuarter full = TurnedBack(FullyReduced(x), quarters);
  return Flipped(LongSine(full).high, full.sign);
}

bool IsFinite(double x) {
  return std::fabs(x) <= 1.7976931348623157e308;
}

// The result of the functions of angles for infinities and NaN.
double OfNoNumber(double x) {
  return x != x ? x + x : ProcessorsNan();
}

double LongTangent(double x) {
  const ReducedAngle full = FullyReduced(x);
  const InQuarter over = TurnedBack(full, 0);
  // The cosine is the sine a quarter ahead; a quotient of two long sums has bits enough to round rightly.
  const InQuarter under = TurnedBack(full, 1);
  return Flipped(Over(LongSine(over), LongSine(under)).high, over.sign ^ under.sign);
}

}  // namespace

double Sine(double x) {
  if (!IsFinite(x)) return OfNoNumber(x);
  return std::fabs(x) < kIsItsSine ? x : SineAhead(x, 0);
}

double Cosine(double x) {
  if (!IsFinite(x)) return OfNoNumber(x);
  return std::fabs(x) < kIsItsSine ? 1 : SineAhead(x, 1);
}

double Tangent(double x) {
  if (!IsFinite(x)) return OfNoNumber(x);
  if (std::fabs(x) < kIsItsSine) return x;
  const ReducedAngle quick = QuicklyReduced(x);
  const InQuarter sine = TurnedBack(quick, 0);
  const InQuarter cosine = TurnedBack(quick, 1);
  const Pair quotient = Over(Normal(QuickSine(sine)), Normal(QuickSine(cosine)));
  double rounded = 0;
  if (RoundsSurely(quotient, std::fabs(quotient.high) * kQuickTangentError, rounded)) {
    return Flipped(rounded, sine.sign ^ cosine.sign);
  }
  return LongTangent(x);
}

}  // namespace lorv::arithmetic
