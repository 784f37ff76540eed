#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "framework/text/char_class.h"
#include "framework/text/number_text.h"

// Reads the numbers of formulas, for the parser and the direct evaluation: both must read the same bits as
// the library's general reader, and nearly all numbers are short enough to be read by one exact division.
namespace lorv {

constexpr std::size_t kExactDigits = 15;
constexpr std::array<double, kExactDigits + 1> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Kept apart: hardly any number of a formula takes this way.
[[gnu::noinline]] inline double ReadLongNumber(LPCTSTR start, LPCTSTR end) {
  return ReadReal({start, static_cast<std::size_t>(end - start)});
}

// Reads the number of a formula that begins with the digit at `at`, and sets `at` behind it: digits and
// points in any mix, of which the second point ends the value, not the number. The text is terminated.
inline double ReadFormulaNumber(LPCTSTR& at) {
  const LPCTSTR start = at;
  LPCTSTR end = start;
  std::uint64_t digits = 0;  // of a long number it overflows, and is not used
  const auto read_digits = [&end, &digits] {
    for (; IsDigit(*end); ++end) digits = digits * 10 + static_cast<std::uint64_t>(*end - '0');
  };
  read_digits();
  auto count = static_cast<std::size_t>(end - start);
  std::size_t decimals = 0;
  if (*end == '.') {
    const LPCTSTR behind_point = ++end;
    read_digits();
    decimals = static_cast<std::size_t>(end - behind_point);
    count += decimals;
    while (IsDigit(*end) || *end == '.') ++end;
  }
  at = end;
  if (count > kExactDigits) return ReadLongNumber(start, end);
  // Both numbers are exact, so the quotient is the correctly rounded value.
  return static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOfTen[decimals];
}

}  // namespace lorv
