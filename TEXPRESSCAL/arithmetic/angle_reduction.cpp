#include "TEXPRESSCAL/arithmetic/angle_reduction.h"

#include <array>

#include "TEXPRESSCAL/arithmetic/angle_table.h"

// An angle as a whole number of 512ths of the circle plus a rest, for angles of any size. It is asked where
// the quick reduction is not sure: near multiples of the step and for huge angles. The table holds 1 / (2 *
// pi) with more bits than the largest exponent can shift away, so the rest is as exact for 1e300 as for 1;
// what it returns decides the last bit of sines and tangents.

namespace lorv::arithmetic {
namespace {

__extension__ using Wide = unsigned __int128;

constexpr int kWordBits = 64;

constexpr int kIndexBits = 9;  // of a step within the full circle

// A fraction of 256 bits, most significant word first.
using Fraction = std::array<std::uint64_t, 4>;

// The part behind the point of |x| / (2 * pi). The product of the whole number that the mantissa is with
// those bits of the table that weigh less than a full circle: the last 53 bits of the fraction are not good.
Fraction TurnsOf(double x) {
  const std::uint64_t bits = BitsOf(x);
  const int exponent = static_cast<int>((bits >> kMantissaBits) & 0x7FF) - kExponentBias - kMantissaBits;
  const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << kMantissaBits) - 1)) | std::uint64_t{1}
                                                                                          << kMantissaBits;
  const int first = exponent + kWordBits;  // the table begins with a word of zeros
  const auto word = static_cast<std::size_t>(first / kWordBits);
  const int shift = first % kWordBits;
  Fraction fraction = {};
  std::uint64_t carry = 0;
  for (std::size_t at = fraction.size(); at-- > 0;) {
    // Only four words of the table count: those before weigh whole circles, those behind lie below what a
    // pair can hold.
    const std::uint64_t left = kInverseCircle[word + at] << shift;
    const std::uint64_t right = shift == 0 ? 0 : kInverseCircle[word + at + 1] >> (kWordBits - shift);
    const Wide product = static_cast<Wide>(left | right) * mantissa + carry;
    fraction[at] = static_cast<std::uint64_t>(product);
    carry = static_cast<std::uint64_t>(product >> kWordBits);
  }
  return fraction;
}

void Negate(Fraction& fraction) {
  std::uint64_t carry = 1;
  for (std::size_t at = fraction.size(); at-- > 0;) {
    fraction[at] = ~fraction[at] + carry;
    carry = carry != 0 && fraction[at] == 0 ? 1 : 0;
  }
}

// The leading 106 bits of a fraction that is not 0, as a pair.
Pair PairOf(const Fraction& fraction) {
  std::size_t word = 0;
  while (fraction[word] == 0) ++word;
  const int zeros = std::countl_zero(fraction[word]);
  const auto from = [&](std::size_t at) {
    const std::uint64_t here = at < fraction.size() ? fraction[at] << zeros : 0;
    return zeros == 0 || at + 1 >= fraction.size() ? here : here | fraction[at + 1] >> (kWordBits - zeros);
  };
  const std::uint64_t first = from(word);
  const std::uint64_t second = from(word + 1);
  const double high = static_cast<double>(first >> 11);
  const double low = static_cast<double>((first & 0x7FF) << 42 | second >> 22) * PowerOfTwo(-53);
  const double unit = PowerOfTwo(-53 - zeros - static_cast<int>(word) * kWordBits);
  const Pair sum = FastSum(high, low);
  return {sum.high * unit, sum.low * unit};
}

}  // namespace

ReducedAngle ReducedByTable(double angle) {
  Fraction turns = TurnsOf(angle);
  constexpr int kBelowIndex = kWordBits - kIndexBits;
  // To the nearest step, so that the rest may be negative and is at most half a step.
  const std::uint64_t step = (turns[0] + (std::uint64_t{1} << (kBelowIndex - 1))) >> kBelowIndex;
  turns[0] -= step << kBelowIndex;
  const bool negative = turns[0] >> (kWordBits - 1) != 0;
  if (negative) Negate(turns);
  const Pair rest = Times(kFullCircle, PairOf(turns));
  // The fraction was made of |angle|: its sign comes back here, in the step and in the rest.
  const bool flips = negative != (angle < 0);
  const int count = static_cast<int>(step & ((1 << kIndexBits) - 1));
  return {angle < 0 ? -count : count, flips ? Negated(rest) : rest};
}

ReducedAngle FullyReduced(double angle) {
  // Below half a step the angle is its own rest, to the last bit; a tiny one has no place in the table.
  const bool is_rest = std::fabs(angle) * kStepsByAngle < 0.5;
  return is_rest ? ReducedAngle{0, {angle, 0}} : ReducedByTable(angle);
}

}  // namespace lorv::arithmetic
