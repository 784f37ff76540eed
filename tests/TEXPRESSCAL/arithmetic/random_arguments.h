#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

// Arguments that reach what is hard for functions of numbers: all exponents, what lies beside multiples of
// pi, beside 1, near zero, and the short decimals of real formulas. The same on every system: a generator of
// whole numbers and plain double operations only.
namespace lorv::test {

class RandomArguments {
 public:
  explicit RandomArguments(std::uint64_t seed) : random_(seed) {}

  std::uint64_t Below(std::uint64_t end) { return random_() % end; }

  // From `from` up to below `to`.
  double Between(double from, double to) {
    return from + (to - from) * (static_cast<double>(random_() >> 11) * 0x1p-53);
  }

  // Any finite double.
  double Any() {
    for (;;) {
      const double x = std::bit_cast<double>(random_());
      if (std::fabs(x) <= 1.7976931348623157e308) return x;
    }
  }

  double BesideMultipleOfPi() {
    const double parts = static_cast<double>(std::int64_t{1} << Below(4));
    const double count = static_cast<double>(Below(std::uint64_t{1} << (1 + Below(40))));
    const double x = count * (3.141592653589793 / parts);
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) + Below(9)) * (Below(2) == 0 ? 1 : -1);
  }

  double OneArgument() {
    switch (Below(8)) {
      case 0:
        return Any();
      case 1:
        return BesideMultipleOfPi();
      case 2:
        return 1 + Between(-1, 1) * TwoTo(-static_cast<int>(Below(53)));
      case 3:
        return Between(-1, 1) * TwoTo(-static_cast<int>(Below(60)));
      case 4:
        return Between(-750, 750);
      case 5:
        return Between(-1, 1) * TwoTo(static_cast<int>(Below(60)));
      case 6:
        return Between(-1, 1);
      default:
        return Decimal();
    }
  }

  // A base and an exponent.
  struct Two {
    double base;
    double exponent;
  };
  Two TwoArguments() {
    switch (Below(7)) {
      case 0:
        return {Any(), Any()};
      case 1:
        return {Between(0, 100), Between(-20, 20)};
      case 2:
        return {Decimal(), static_cast<double>(Below(81)) - 40};
      case 3:
        return {1 + Between(-1, 1) * 0x1p-20, Between(-1, 1) * 0x1p30};
      case 4: {  // powers that fall into the middle between two doubles
        const double root = static_cast<double>(1 + Below(63));
        return {root * root * root * root, static_cast<double>(Below(81)) / 8 - 5};
      }
      case 5:
        return {std::fabs(Any()), Between(-2, 2)};
      default: {  // around the smallest doubles
        const int exponent = static_cast<int>(2 + Below(12));
        return {static_cast<double>(1 + Below(8)) * TwoTo(-1074 / exponent - static_cast<int>(Below(3))),
                static_cast<double>(exponent)};
      }
    }
  }

 private:
  static double TwoTo(int exponent) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
  }
  double Decimal() { return (static_cast<double>(Below(2000001)) - 1000000) / 1000; }

  std::mt19937_64 random_;
};

}  // namespace lorv::test
