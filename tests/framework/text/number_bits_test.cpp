// Numbers as text and the few functions of the C library that stay in use: the same on every system.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>

#include "framework/text/cstring.h"
#include "framework/text/number_text.h"

namespace lorv::test {
namespace {

class Digest {
 public:
  void Add(std::uint64_t bits) { value_ = (value_ ^ bits) * 0x9E3779B97F4A7C15 + (value_ >> 29); }
  void Add(double x) { Add(std::bit_cast<std::uint64_t>(x)); }
  void Add(const std::string& text) {
    for (const char unit : text) Add(static_cast<std::uint64_t>(static_cast<unsigned char>(unit)));
  }
  std::uint64_t Value() const { return value_; }

 private:
  std::uint64_t value_ = 1;
};

double AnyFinite(std::mt19937_64& random) {
  for (;;) {
    const double x = std::bit_cast<double>(random());
    if (std::isfinite(x)) return x;
  }
}

TEST(NumberBits, TextOfNumbersIsTheSameOnEverySystem) {
  std::mt19937_64 random(3);
  Digest digest;
  for (int i = 0; i < 40'000; ++i) {
    const double any = AnyFinite(random);
    const double common = static_cast<double>(static_cast<std::int64_t>(random() >> 11)) / 1024 / 1024;
    for (const double x : {any, common, -common / 3}) {
      const std::string texts[] = {RealToText(x, 'e', static_cast<int>(random() % 18)),
                                   RealToText(x, 'g', static_cast<int>(random() % 18)),
                                   RealToText(x, 'f', static_cast<int>(random() % 9))};
      for (const std::string& text : texts) {
        digest.Add(text);
        digest.Add(ReadReal(CString::FromUtf8(text).View()));
      }
    }
  }
  EXPECT_EQ(digest.Value(), 0xFD06AD002C19A662) << std::hex << "0x" << digest.Value();
}

TEST(NumberBits, RoundingToWholesIsTheSameOnEverySystem) {
  std::mt19937_64 random(4);
  Digest digest;
  for (int i = 0; i < 300'000; ++i) {
    const double halves = static_cast<double>(static_cast<std::int64_t>(random() >> 40)) / 2 - 4e6;
    const double beside = std::nextafter(halves, i % 2 == 0 ? 1e300 : -1e300);
    for (const double x : {halves, beside, beside / 1e9}) {
      for (const double whole : {std::floor(x), std::ceil(x), std::round(x)}) digest.Add(whole);
      digest.Add(static_cast<std::uint64_t>(std::lround(x)));
    }
    const double any = AnyFinite(random);
    digest.Add(std::floor(any));
    digest.Add(std::fmod(any, 2.0));
    digest.Add(std::fmod(any, halves + 0.25));
    digest.Add(std::ldexp(any, static_cast<int>(random() % 200) - 100));
  }
  EXPECT_EQ(digest.Value(), 0xA25105E39BB04AC9) << std::hex << "0x" << digest.Value();
}

}  // namespace
}  // namespace lorv::test
