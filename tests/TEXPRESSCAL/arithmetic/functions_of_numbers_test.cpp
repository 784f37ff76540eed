#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "TEXPRESSCAL/arithmetic/square_root.h"
#include "TEXPRESSCAL/calculate_rows.h"
#include "TEXPRESSCAL/express.h"
#include "framework/text/number_text.h"
#include "tests/TEXPRESSCAL/arithmetic/random_arguments.h"

namespace lorv::test {
namespace {

using namespace arithmetic;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr double kLargest = std::numeric_limits<double>::max();

std::uint64_t Bits(double x) {
  return std::bit_cast<std::uint64_t>(x);
}

// What a run of results comes to. Every result counts with its place and all its bits.
class Digest {
 public:
  void Add(double x) { value_ = (value_ ^ Bits(x)) * 0x9E3779B97F4A7C15 + (value_ >> 29); }
  std::uint64_t Value() const { return value_; }

 private:
  std::uint64_t value_ = 0xCBF29CE484222325;
};

struct NamedFunction {
  const char* name;
  double (*function)(double);
  std::uint64_t digest;  // of the same arguments on every system
};

const NamedFunction kFunctions[] = {
    {"sine", Sine, 0x2ED3F803306ECC08},
    {"cosine", Cosine, 0x80682DACDBA91750},
    {"tangent", Tangent, 0x18F1B952DC780F14},
    {"arc sine", ArcSine, 0xDA5BAF922A5A5A80},
    {"arc cosine", ArcCosine, 0xA2992F6E75F3D822},
    {"arc tangent", ArcTangent, 0xC2B0EBD153400F69},
    {"exponential", Exponential, 0x605516D96758D9FA},
    {"logarithm", Logarithm, 0xDB7B5766B127D7B8},
    {"square root", SquareRoot, 0xE05952332943D1F6},
};

constexpr int kArgumentsEach = 1'200'000;  // ten million and more with those of the power

TEST(FunctionsOfNumbers, HaveTheSameBitsOnEverySystem) {
  for (const NamedFunction& each : kFunctions) {
    RandomArguments arguments(20261122);
    Digest digest;
    for (int i = 0; i < kArgumentsEach; ++i) digest.Add(each.function(arguments.OneArgument()));
    EXPECT_EQ(digest.Value(), each.digest) << each.name << std::hex << " 0x" << digest.Value();
  }
}

TEST(FunctionsOfNumbers, PowersHaveTheSameBitsOnEverySystem) {
  RandomArguments arguments(20261123);
  Digest digest;
  for (int i = 0; i < kArgumentsEach; ++i) {
    const RandomArguments::Two two = arguments.TwoArguments();
    digest.Add(Power(two.base, two.exponent));
  }
  EXPECT_EQ(digest.Value(), 0xA89CAA7678566A35) << std::hex << "0x" << digest.Value();
}

struct KnownValue {
  double (*function)(double);
  double argument;
  double value;
};

// Nearest doubles to values that were calculated with 200 bits.
TEST(FunctionsOfNumbers, GiveTheNearestDouble) {
  const KnownValue kTable[] = {
      {Sine, 1e22, -0.8522008497671888},
      {Sine, 3.141592653589793, 1.2246467991473532e-16},
      {Sine, 0.5, 0.479425538604203},
      {Sine, kSmallest, kSmallest},
      {Cosine, 1e22, 0.523214785395139},
      {Cosine, 1.5707963267948966, 6.123233995736766e-17},
      {Tangent, 1.5707963267948966, 1.633123935319537e16},
      {Tangent, kLargest, -0.004962015874444895},
      {ArcSine, 1, 1.5707963267948966},
      {ArcSine, 0.5, 0.5235987755982989},
      {ArcCosine, -1, 3.141592653589793},
      {ArcCosine, 1, 0},
      {ArcCosine, 0, 1.5707963267948966},
      {ArcTangent, 1, 0.7853981633974483},
      {ArcTangent, kLargest, 1.5707963267948966},
      {Exponential, 1, 2.718281828459045},
      {Exponential, 0x1p-53, 1.0000000000000002},  // just above the middle
      {Exponential, -0x1p-54, 1},                  // just above the middle below 1
      {Exponential, 709.782712893384, 1.7976931348622732e308},
      {Exponential, 709.7827128933841, kInfinity},
      {Exponential, -745.1332191019411, kSmallest},
      {Exponential, -745.1332191019412, 0},
      {Logarithm, 10, 2.302585092994046},
      {Logarithm, kSmallest, -744.4400719213812},
      {Logarithm, 1, 0},
  };
  for (const KnownValue& row : kTable) {
    EXPECT_EQ(Bits(row.function(row.argument)), Bits(row.value))
        << row.argument << " gives " << row.function(row.argument) << " for " << row.value;
  }
}

struct KnownPower {
  double base;
  double exponent;
  double value;
};

TEST(FunctionsOfNumbers, GiveTheNearestPower) {
  const KnownPower kTable[] = {
      {10, -2, 0.01},
      {10, 2, 100},
      {0.3, 3, 0.026999999999999996},
      {2, 0.5, 1.4142135623730951},
      {2, -1074, kSmallest},
      {2, -1075, 0},
      {1.0000000000000002, 2.5, 1.0000000000000007},      // just above the middle
      {1.0000000000000036, 1.03125, 1.0000000000000038},  // just above the middle
      {81, 1.25, 243},
      {81, 8.25, 5559060566555523},
      {6561, 4.125, 5559060566555523},
      {0x1.8p-214, 5, 0x7Ap-1074},  // 121.5 of the smallest
      {2, 1023, 8.98846567431158e307},
      {2, 1024, kInfinity},
      {-2, 3, -8},
      {-2, -1, -0.5},
      {-8, 1023, -kInfinity},
      {-8, -1023, -0.0},
      {7, 0, 1},
      {kInfinity, 0, 1},
      {1, kLargest, 1},
      {0.9999999999999999, kLargest, 0},
      {1.0000000000000002, kLargest, kInfinity},
      {kLargest, kSmallest, 1},
      {kSmallest, 0.5, 2.2227587494850775e-162},
      {kSmallest, -0.5, 4.4989137945431964e161},
      {134217729, 2, 18014398777917440},  // 2^54 + 2^28 + 1, and the middle goes to the even one
      {208065, 3, 9007351116674624},      // 54 bits, in the middle as well
      {0, 2, 0},
      {-0.0, 3, -0.0},
      {-0.0, -3, -kInfinity},
      {0, -0.5, kInfinity},
      {-kInfinity, 3, -kInfinity},
      {-kInfinity, -3, -0.0},
      {-kInfinity, 0.5, kInfinity},
      {0.5, kInfinity, 0},
      {-2, kInfinity, kInfinity},
      {-1, -kInfinity, 1},
  };
  for (const KnownPower& row : kTable) {
    EXPECT_EQ(Bits(Power(row.base, row.exponent)), Bits(row.value))
        << row.base << " ^ " << row.exponent << " gives " << Power(row.base, row.exponent);
  }
}

TEST(FunctionsOfNumbers, OutsideTheirDomainGiveWhatTheProcessorGives) {
  constexpr std::uint64_t kProcessors = 0xFFF8000000000000;
  for (const double x : {kInfinity, -kInfinity}) {
    EXPECT_EQ(Bits(Sine(x)), kProcessors);
    EXPECT_EQ(Bits(Cosine(x)), kProcessors);
    EXPECT_EQ(Bits(Tangent(x)), kProcessors);
  }
  EXPECT_EQ(Bits(ArcSine(1.0000000000000002)), kProcessors);
  EXPECT_EQ(Bits(ArcCosine(-2)), kProcessors);
  EXPECT_EQ(Bits(Logarithm(-kSmallest)), kProcessors);
  EXPECT_EQ(Bits(Power(-8, 0.5)), kProcessors);
  EXPECT_EQ(Logarithm(0), -kInfinity);
  EXPECT_EQ(Logarithm(kInfinity), kInfinity);
  EXPECT_EQ(Exponential(-kInfinity), 0);
  EXPECT_EQ(Exponential(kInfinity), kInfinity);
  EXPECT_EQ(ArcTangent(-kInfinity), -1.5707963267948966);
}

TEST(FunctionsOfNumbers, PassNotANumberOn) {
  const double nan = std::bit_cast<double>(std::uint64_t{0x7FF8000000000123});
  for (const NamedFunction& each : kFunctions) EXPECT_EQ(Bits(each.function(nan)), Bits(nan)) << each.name;
  EXPECT_NE(Power(nan, 2), Power(nan, 2));
  EXPECT_NE(Power(2, nan), Power(2, nan));
  EXPECT_NE(Power(-2, nan), Power(-2, nan));
  EXPECT_EQ(Power(nan, 0), 1);
  EXPECT_EQ(Power(1, nan), 1);
}

TEST(FunctionsOfNumbers, AreSymmetric) {
  RandomArguments arguments(5);
  for (int i = 0; i < 100'000; ++i) {
    const double x = std::fabs(arguments.OneArgument());
    ASSERT_EQ(Bits(Sine(-x)), Bits(-Sine(x))) << x;
    ASSERT_EQ(Bits(Cosine(-x)), Bits(Cosine(x))) << x;
    ASSERT_EQ(Bits(Tangent(-x)), Bits(-Tangent(x))) << x;
    ASSERT_EQ(Bits(ArcTangent(-x)), Bits(-ArcTangent(x))) << x;
    if (x <= 1) {
      ASSERT_EQ(Bits(ArcSine(-x)), Bits(-ArcSine(x))) << x;
    }
  }
}

// The whole way from a text to the number: every function of the language and the power, in all ways of
// working.
class WholeLanguage {
 public:
  void Add(double x) { digest_.Add(x != x ? 0.5 : x); }
  void Add(const CString& formula) {
    CExpression expression;
    double value = 0;
    if (expression.ChangeExpression(formula) != -1) value = -1;
    Add(static_cast<double>(expression.Value(value)));
    Add(value);
  }
  std::uint64_t Value() const { return digest_.Value(); }

 private:
  Digest digest_;
};

constexpr const char* kOfOneNumber[] = {"SIN",  "COS",  "EXP",  "SQRT", "LOG",  "TG",    "CTG",   "ASIN",
                                        "ACOS", "ATG",  "ATAN", "TAN",  "CEIL", "FLOOR", "ROUND", "INT",
                                        "ABS",  "DTOR", "RTOD", "SINA", "COSA", "TANA",  "CTGA",  "LEN"};

TEST(FunctionsOfNumbers, WholeLanguageHasTheSameBitsOnEverySystem) {
  WholeLanguage all;
  RandomArguments arguments(7);
  for (int i = 0; i < 4'000; ++i) {
    const std::string a = RealToText(arguments.Between(-2, 2) * (i % 3 == 0 ? 1 : 1e9), 'f', 1 + i % 18);
    const std::string b = RealToText(arguments.Between(-9, 9), 'f', i % 16);
    for (const char* name : kOfOneNumber) all.Add(CString::FromUtf8(name + ("(" + a + ")")));
    for (const char* name : {"MAX", "MIN", "IIF", "FIND"}) {
      all.Add(CString::FromUtf8(name + ("(" + a + "," + b + (*name == 'I' ? ",1/3)" : ")"))));
    }
    all.Add(CString::FromUtf8("(" + a + ")^(" + b + ")+|" + b + "|^2.5"));
  }
  EXPECT_EQ(all.Value(), 0x4467BCF87839B8C1) << std::hex << "0x" << all.Value();
}

TEST(FunctionsOfNumbers, RowsHaveTheSameBitsOnEverySystem) {
  constexpr std::size_t kRows = 5'000;
  std::vector<double> a(kRows);
  std::vector<double> results(kRows);
  RandomArguments arguments(11);
  for (double& x : a) x = static_cast<double>(arguments.Below(4'000'001)) / 1000 - 2000;
  WholeLanguage all;
  for (const char* name : kOfOneNumber) {
    for (const char* with : {"(A)", "(A/2000)", "(|A|/7)"}) {
      CAdExpCalculate calculator(CString::FromUtf8(std::string(name) + with + "+A^3-|A|^1.7"));
      const ValueColumn columns[] = {{_T("A"), a.data()}};
      CalculateRows(calculator, columns, kRows, results.data(), nullptr);
      for (const double x : results) all.Add(x);
    }
  }
  EXPECT_EQ(all.Value(), 0x6BF3B8DD50EC8CA2) << std::hex << "0x" << all.Value();
}

}  // namespace
}  // namespace lorv::test
