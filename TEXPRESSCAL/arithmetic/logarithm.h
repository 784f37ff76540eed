#pragma once

#include "TEXPRESSCAL/arithmetic/double_pair.h"
#include "TEXPRESSCAL/arithmetic/logarithm_table.h"

// Natural logarithms as pairs, for `Logarithm` and `Power`. The argument is positive and finite.
namespace lorv::arithmetic {

// Relative error below 2^-98.
Pair LongLogarithm(double x);

// x = 2^exponent * (1 + r) / inverse, the inverse from the table.
struct PartedNumber {
  double exponent;  // k
  int index;        // of c
  Pair r;           // exact
};

constexpr int kNumberIndexBits = 7;
constexpr std::uint64_t kFirstOfTable =
    0x3FE6000000000000;  // 0.6875: numbers from here up to twice that are in the table

inline PartedNumber PartOfNumber(double x) {
  std::uint64_t bits = BitsOf(x);
  double lifted = 0;
  if (bits >> kMantissaBits == 0) {  // below the normal doubles
    bits = BitsOf(x * PowerOfTwo(kMantissaBits));
    lifted = kMantissaBits;
  }
  const std::uint64_t above = bits - kFirstOfTable;
  const int index =
      static_cast<int>(above >> (kMantissaBits - kNumberIndexBits)) & ((1 << kNumberIndexBits) - 1);
  const std::int64_t exponent = static_cast<std::int64_t>(above) >> kMantissaBits;
  const double z = std::bit_cast<double>(bits - (static_cast<std::uint64_t>(exponent) << kMantissaBits));
  const double head = std::bit_cast<double>(BitsOf(z) & ~std::uint64_t{0x7FFFFFF});
  // The inverse has ten bits, so both products are exact.
  const double inverse = kLogarithms[index].inverse;
  return {static_cast<double>(exponent) - lifted, index, Sum(head * inverse - 1, (z - head) * inverse)};
}

struct QuickLogarithmResult {
  Pair value;
  double error;  // the value errs by less, absolutely
};

inline QuickLogarithmResult QuickLogarithm(double x) {
  const PartedNumber parted = PartOfNumber(x);
  const LogarithmRow& row = kLogarithms[parted.index];
  const double r = parted.r.high;
  const double square = r * r;
  const double tail = 1.0 / 3 - r * 0.25 + square * (0.2 - r * (1.0 / 6)) +
                      square * square * (1.0 / 7 - r * 0.125 + square * (1.0 / 9 - r * 0.1));
  const double series = square * (r * tail - 0.5) - parted.r.low * r;
  const double whole = parted.exponent * kLogarithmOfTwo.high + row.high;
  const Pair sum = FastSum(whole, r);
  const double low =
      (sum.low + parted.r.low) + ((parted.exponent * kLogarithmOfTwo.middle + row.middle) + series);
  const Pair value = FastSum(sum.high, low);
  return {value, square * PowerOfTwo(-52) + std::fabs(value.high) * PowerOfTwo(-65)};
}

}  // namespace lorv::arithmetic
