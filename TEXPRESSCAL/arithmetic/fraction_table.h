#pragma once

#include "TEXPRESSCAL/arithmetic/double_pair.h"

// Written by scripts/arithmetic_tables. Pairs and parts add up to the exact value within their last bit.
// clang-format off
namespace lorv::arithmetic {

// Coefficients of series.
inline constexpr Pair kOneThird = {0x1.5555555555555p-2, 0x1.5555555555555p-56};
inline constexpr Pair kOneFifth = {0x1.999999999999ap-3, -0x1.999999999999ap-57};
inline constexpr Pair kOneSixth = {0x1.5555555555555p-3, 0x1.5555555555555p-57};
inline constexpr Pair kOneSeventh = {0x1.2492492492492p-3, 0x1.2492492492492p-57};
inline constexpr Pair kOneOf24 = {0x1.5555555555555p-5, 0x1.5555555555555p-59};
inline constexpr Pair kOneOf120 = {0x1.1111111111111p-7, 0x1.1111111111111p-63};

}  // namespace lorv::arithmetic
// clang-format on
