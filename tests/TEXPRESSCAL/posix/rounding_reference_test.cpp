// The functions of numbers beside a library of arbitrary precision that rounds every result rightly.

#include <gtest/gtest.h>
#include <mpfr.h>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "tests/TEXPRESSCAL/arithmetic/random_arguments.h"

namespace lorv::test {
namespace {

// A number of that library with the digits and the exponents of a double.
class Exact {
 public:
  explicit Exact(double x) : Exact() { mpfr_set_d(value_, x, MPFR_RNDN); }
  Exact() {
    mpfr_set_emin(-1073);
    mpfr_set_emax(1024);
    mpfr_init2(value_, 53);
  }
  ~Exact() { mpfr_clear(value_); }
  Exact(const Exact&) = delete;
  Exact& operator=(const Exact&) = delete;

  mpfr_ptr Get() { return value_; }

  // After an operation that gave `ternary`.
  double Rounded(int ternary) {
    mpfr_subnormalize(value_, ternary, MPFR_RNDN);
    return mpfr_get_d(value_, MPFR_RNDN);
  }

 private:
  mpfr_t value_;
};

bool SameNumber(double a, double b) {
  return (a != a && b != b) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

struct Beside {
  const char* name;
  double (*ours)(double);
  int (*theirs)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
};

constexpr int kArguments = 60'000;

TEST(RoundingReference, FunctionsOfOneNumberGiveTheNearestDouble) {
  const Beside kTable[] = {
      {"sine", arithmetic::Sine, mpfr_sin},
      {"cosine", arithmetic::Cosine, mpfr_cos},
      {"tangent", arithmetic::Tangent, mpfr_tan},
      {"arc sine", arithmetic::ArcSine, mpfr_asin},
      {"arc cosine", arithmetic::ArcCosine, mpfr_acos},
      {"arc tangent", arithmetic::ArcTangent, mpfr_atan},
      {"exponential", arithmetic::Exponential, mpfr_exp},
      {"logarithm", arithmetic::Logarithm, mpfr_log},
  };
  Exact result;
  for (const Beside& each : kTable) {
    RandomArguments arguments(97);
    for (int i = 0; i < kArguments; ++i) {
      double x = arguments.OneArgument();
      if (each.theirs == mpfr_log) x = std::fabs(x);
      Exact argument(x);
      const double nearest = result.Rounded(each.theirs(result.Get(), argument.Get(), MPFR_RNDN));
      ASSERT_TRUE(SameNumber(each.ours(x), nearest)) << each.name << " of " << std::hexfloat << x;
    }
  }
}

TEST(RoundingReference, PowersGiveTheNearestDouble) {
  RandomArguments arguments(98);
  Exact result;
  for (int i = 0; i < 4 * kArguments; ++i) {
    const RandomArguments::Two two = arguments.TwoArguments();
    Exact base(two.base);
    Exact exponent(two.exponent);
    const double nearest = result.Rounded(mpfr_pow(result.Get(), base.Get(), exponent.Get(), MPFR_RNDN));
    ASSERT_TRUE(SameNumber(arithmetic::Power(two.base, two.exponent), nearest))
        << std::hexfloat << two.base << " ^ " << two.exponent;
  }
}

}  // namespace
}  // namespace lorv::test
