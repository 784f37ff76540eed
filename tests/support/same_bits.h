#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace lorv::test {

// The same number to the last bit; any two that are no numbers count as the same.
inline bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

}  // namespace lorv::test
