#include "comm/short_decimal.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/comm/plain_decimal.h"

namespace lorv {
namespace {

std::string Short(double value, int digits, bool fixed = false, int size = 400) {
  std::array<TCHAR, 400> out;
  out.fill('#');
  const int length = ShortDecimal(value, digits, fixed, out.data(), size);
  EXPECT_LE(length, std::max(size, 0));
  std::string text;
  for (int i = 0; i < length; ++i) text += static_cast<char>(out[static_cast<std::size_t>(i)]);
  for (std::size_t i = static_cast<std::size_t>(std::max(size, 0)); i < out.size(); ++i) {
    EXPECT_EQ(out[i], '#') << "written past the size at " << i;
  }
  return text;
}

// Counts what differs, so that a broken build does not print millions of lines.
class Comparison {
 public:
  void Compare(double value, int digits) {
    for (const bool fixed : {false, true}) {
      std::array<TCHAR, 330> out;
      const int length = ShortDecimal(value, digits, fixed, out.data(), 330);
      const std::string plain = test::PlainDecimal(value, digits, fixed);
      bool same = static_cast<std::size_t>(length) == plain.size();
      for (std::size_t i = 0; same && i < plain.size(); ++i) same = out[i] == static_cast<TCHAR>(plain[i]);
      if (same) continue;
      if (++wrong_ <= 5)
        ADD_FAILURE() << std::hexfloat << value << " digits " << digits << " plain " << plain;
    }
  }
  // The value and its neighbours, both signs.
  void CompareAround(double value, int digits) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double v : {value, std::nextafter(value, infinity), std::nextafter(value, -infinity)}) {
      Compare(v, digits);
      Compare(-v, digits);
    }
  }
  int Wrong() const { return wrong_; }

 private:
  int wrong_ = 0;
};

constexpr int kRounds = 150000;

TEST(ShortDecimal, HeaderExamples) {
  EXPECT_EQ(Short(12.5, 3), "12.5");
  EXPECT_EQ(Short(1.9999, 3), "2.000");
}

TEST(ShortDecimal, TakesTheFewestDecimals) {
  const struct {
    double value;
    int digits;
    const char* text;
  } cases[] = {
      {0.0, 3, "0"},
      {-0.0, 3, "-0"},
      {2.0, 3, "2"},
      {1.5, 3, "1.5"},
      {-1.5, 3, "-1.5"},
      {0.24, 3, "0.24"},
      {1250.375, 3, "1250.375"},
      {1.2345, 2, "1.23"},
      {0.0004, 3, "0"},
      {-0.0004, 3, "-0"},
      {100.0, 3, "100"},
      {1234567.25, 3, "1234567.25"},
      {0.1 + 0.2, 3, "0.3"},
      {2.9999, 3, "3.000"},
      {2.99999, 3, "3"},
      {99.95, 1, "100.0"},
      {7.25, 0, "7"},
      {1.5, 0, "2"},
      {2.5, 0, "2"},
      {0.00001, 5, "0.00001"},
      {1.0 / 3, 5, "0.33333"},
      {12.34567, 6, "12.34567"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Short(c.value, c.digits), c.text) << c.value << " digits " << c.digits;
}

TEST(ShortDecimal, FixedDigitsFillUp) {
  EXPECT_EQ(Short(1.5, 3, true), "1.500");
  EXPECT_EQ(Short(2.0, 5, true), "2.00000");
  EXPECT_EQ(Short(2.0, 6, true), "2.000000");
  EXPECT_EQ(Short(2.0, 9, true), "2.000000");
  EXPECT_EQ(Short(2.0, 0, true), "2");
}

TEST(ShortDecimal, DigitsOutsideTheTablePrintSixDecimals) {
  EXPECT_EQ(Short(1.0 / 3, 7), "0.333333");
  EXPECT_EQ(Short(1.0 / 3, 40), "0.333333");
  EXPECT_EQ(Short(0.123456, 7), "0.123456");
  EXPECT_EQ(Short(0.5, 7), "0.5");
  EXPECT_EQ(Short(2.0, -1), "2.000000");
  EXPECT_EQ(Short(2.0, std::numeric_limits<int>::min()), "2.000000");
  EXPECT_EQ(Short(2.0, std::numeric_limits<int>::max()), "2.000000");
  EXPECT_EQ(Short(0.1, std::numeric_limits<int>::max() - 1), "0.100000");
}

TEST(ShortDecimal, HugeAndSpecialValues) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Short(5e18, 3), "5000000000000000000");
  EXPECT_EQ(Short(1e19, 3), "10000000000000000000.000");
  EXPECT_EQ(Short(1e300, 3).size(), 305U);
  EXPECT_EQ(Short(-std::numeric_limits<double>::max(), 6).size(), 317U);
  EXPECT_EQ(Short(infinity, 3), "inf");
  EXPECT_EQ(Short(-infinity, 3), "-inf");
  EXPECT_EQ(Short(std::numeric_limits<double>::quiet_NaN(), 3), "nan");
  EXPECT_EQ(Short(std::numeric_limits<double>::denorm_min(), 3), "0");
}

TEST(ShortDecimal, TextIsCutAtTheSize) {
  for (int size = 0; size < 30; ++size) {
    const auto kept = static_cast<std::size_t>(size);
    EXPECT_EQ(Short(-1250.375, 3, false, size), std::string("-1250.375").substr(0, kept)) << size;
    EXPECT_EQ(Short(1e300, 3, false, size), test::PlainDecimal(1e300, 3, false).substr(0, kept)) << size;
  }
  EXPECT_EQ(Short(1.0, 3, false, -1), "");
}

TEST(ShortDecimal, RandomBitPatternsAgreeWithThePlainWay) {
  Comparison check;
  std::mt19937_64 random(1);
  for (int i = 0; i < kRounds; ++i) {
    check.Compare(std::bit_cast<double>(random()), static_cast<int>(random() % 14) - 1);
  }
  EXPECT_EQ(check.Wrong(), 0);
}

TEST(ShortDecimal, QuantitiesAgreeWithThePlainWay) {
  Comparison check;
  std::mt19937_64 random(2);
  for (int i = 0; i < kRounds; ++i) {
    const double magnitude = std::pow(10.0, static_cast<double>(random() % 14) - 3);
    const double value = std::uniform_real_distribution<double>(-1, 1)(random) * magnitude;
    for (int digits = 0; digits <= 6; ++digits) check.Compare(value, digits);
  }
  EXPECT_EQ(check.Wrong(), 0);
}

TEST(ShortDecimal, DecimalsAndTheirNeighboursAgreeWithThePlainWay) {
  Comparison check;
  std::mt19937_64 random(3);
  for (int i = 0; i < kRounds / 2; ++i) {
    const double whole = static_cast<double>(random() >> (11 + random() % 53));
    const double value = whole / std::pow(10.0, static_cast<double>(random() % 8));
    check.CompareAround(value, static_cast<int>(random() % 7));
  }
  EXPECT_EQ(check.Wrong(), 0);
}

TEST(ShortDecimal, TiesAndTheirNeighboursAgreeWithThePlainWay) {
  Comparison check;
  std::mt19937_64 random(4);
  for (int i = 0; i < kRounds / 2; ++i) {
    const double odd = static_cast<double>((random() >> (20 + random() % 40)) | 1U);
    check.CompareAround(odd / static_cast<double>(1U << (1 + random() % 12)), static_cast<int>(random() % 7));
    // Half a unit of the last decimal, as near as a double comes to it.
    const double power = std::pow(10.0, static_cast<double>(random() % 7));
    check.CompareAround((odd / 2) / power, static_cast<int>(random() % 7));
  }
  EXPECT_EQ(check.Wrong(), 0);
}

// The definition turns from "reached" to "short of" a twentieth of a unit below a whole number, divided by
// ten for each decimal: values around these turns, and around the bounds of the short way.
TEST(ShortDecimal, TurningPointsAgreeWithThePlainWay) {
  Comparison check;
  std::mt19937_64 random(5);
  const std::vector<double> turns = {0.5,  0.499, 0.501, 0.05, 0.051, 0.049, 5e-3,   5e-4,
                                     5e-5, 5e-6,  1e-5,  1e-6, 2e-6,  9e-6,  1.1e-5, 0};
  for (int i = 0; i < kRounds / 2; ++i) {
    const int digits = static_cast<int>(random() % 7);
    const double power = std::pow(10.0, digits);
    const double magnitude = std::pow(10.0, static_cast<double>(random() % 12));
    const double whole = std::floor(std::uniform_real_distribution<double>(0, magnitude)(random));
    const double round = whole * std::pow(10.0, static_cast<double>(random() % 4));
    const double turn = turns[random() % turns.size()];
    check.CompareAround((round - turn) / power, digits);
    check.CompareAround((round + turn) / power, digits);
    const double bound =
        std::ldexp(1.0, random() % 2 == 0 ? 36 : 32) + static_cast<double>(random() % 21) - 10;
    check.CompareAround((bound - turn) / power, digits);
  }
  EXPECT_EQ(check.Wrong(), 0);
}

}  // namespace
}  // namespace lorv
