#pragma once

// The constants of the rounding functions. They stand alone because loops compiled for one generation of
// processors use them too, and such code must not share functions with code compiled for another.
namespace lorv {

// FLOOR and CEIL take 2.9999999999999 for 3.
constexpr double kStepNudge = 1e-10;
// ROUND takes what misses a half by a few bits for a half.
constexpr double kRoundNudge = 1e-15;
// The first number beyond 32-bit integers.
constexpr double kEndOf32Bits = 2147483648.0;

}  // namespace lorv
