#include "TEXPRESSCAL/arithmetic/arc_table.h"
#include "TEXPRESSCAL/arithmetic/fraction_table.h"
#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"

// Angles of right triangles by the ratio of the short side to the long one: atan(u) = atan(c) + atan(t) with
// c the nearest 64th to u, from a table, and t = (u - c) / (1 + u * c), at most 0.0079, from a series. Sides
// and not the ratio are passed on, as a ratio that was rounded already could not be given to the last bit. A
// quick sum is taken where its error bound leaves no doubt how it rounds, else the long one.

namespace lorv::arithmetic {
namespace {

constexpr double kIsItsArc = PowerOfTwo(-27);
constexpr double kHasNoTangent = PowerOfTwo(60);  // beyond this the arc rounds to a quarter circle
constexpr double kRatios = 64;
constexpr double kQuickError = PowerOfTwo(-64);

// The angle is `base` plus, or less, atan(short_side / long_side).
struct Triangle {
  Pair base;
  bool less;
  Pair short_side;
  Pair long_side;
};

// atan(t) / t - 1.
Pair LongSeries(Pair t) {
  const Pair square = Times(t, t);
  constexpr double kTail[] = {1.0 / 9, -1.0 / 11, 1.0 / 13, -1.0 / 15, 1.0 / 17};
  double tail = 0;
  for (int at = 4; at >= 0; --at) tail = tail * square.high + kTail[at];
  Pair sum = Plus(Negated(kOneSeventh), tail * square.high);
  sum = Plus(Times(sum, square), kOneFifth);
  sum = Plus(Times(sum, square), Negated(kOneThird));
  return Times(sum, square);
}

double Arc(const Triangle& triangle) {
  const double ratio = triangle.short_side.high / triangle.long_side.high;
  const double count = (ratio * kRatios + kNearestWhole) - kNearestWhole;
  const double c = count / kRatios;
  // Near 0 the series stands alone, as any part of the table would cost the small result its last bits.
  Pair t = count == 0 ? Over(triangle.short_side, triangle.long_side)
                      : Over(Plus(triangle.short_side, Times(triangle.long_side, -c)),
                             Plus(triangle.long_side, Times(triangle.short_side, c)));
  Pair known = kArcs[static_cast<int>(count)];
  if (triangle.less) {
    known = Negated(known);
    t = Negated(t);
  }
  known = Plus(triangle.base, known);
  const double square = t.high * t.high;
  const double series =
      t.high * square * (-1.0 / 3 + square * (0.2 - square * (1.0 / 7 - square * (1.0 / 9))));
  // Here neither part is sure to be the larger one, so the sum that needs no order is used first.
  const Pair sum = Sum(known.high, t.high);
  const Pair quick = FastSum(sum.high, sum.low + ((known.low + t.low) + series));
  double rounded = 0;
  if (RoundsSurely(quick, std::fabs(quick.high) * kQuickError, rounded)) return rounded;
  return Plus(known, Plus(Times(LongSeries(t), t), t)).high;
}

// sqrt(1 - x * x).
Pair OtherLeg(double x) {
  // The root's first guess divides by it.
  if (x == 1) return {0, 0};
  const Pair square = Product(x, x);
  return Root(Plus(Sum(1, -square.high), -square.low));
}

constexpr Pair kNothing = {0, 0};

}  // namespace

double ArcTangent(double x) {
  const double size = std::fabs(x);
  if (!(size >= kIsItsArc)) return x != x ? x + x : x;
  if (size >= kHasNoTangent) return std::copysign(kQuarterCircle.high, x);
  const double arc =
      size <= 1 ? Arc({kNothing, false, {size, 0}, {1, 0}}) : Arc({kQuarterCircle, true, {1, 0}, {size, 0}});
  return std::copysign(arc, x);
}

double ArcSine(double x) {
  const double size = std::fabs(x);
  if (!(size <= 1)) return x != x ? x + x : ProcessorsNan();
  if (size < kIsItsArc) return x;
  const Pair leg = OtherLeg(size);
  const double arc =
      size <= leg.high ? Arc({kNothing, false, {size, 0}, leg}) : Arc({kQuarterCircle, true, leg, {size, 0}});
  return std::copysign(arc, x);
}

double ArcCosine(double x) {
  const double size = std::fabs(x);
  if (!(size <= 1)) return x != x ? x + x : ProcessorsNan();
  // Below this the argument is far less than the last bit of a quarter circle.
  if (size < PowerOfTwo(-60)) return kQuarterCircle.high;
  const Pair leg = OtherLeg(size);
  // The short side is always the smaller one: near 1 that is the other leg, which keeps the digits that 1 - x
  // loses.
  if (size <= leg.high) return Arc({kQuarterCircle, x > 0, {size, 0}, leg});
  return x > 0 ? Arc({kNothing, false, leg, {size, 0}}) : Arc({kHalfCircle, true, leg, {size, 0}});
}

}  // namespace lorv::arithmetic
