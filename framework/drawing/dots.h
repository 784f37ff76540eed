#pragma once

#include <cstdint>

#include "framework/ports/canvas_port.h"

namespace lorv {

// A length on a screen of `before` dots an inch, in pixels of a screen of `dots`.
//
// Units: pixels; both counts of dots are 1 or more.
// Edges: rounded to the nearest, a half away from 0; from a finer screen straight back a length is itself
//   again.
// Pure; any thread.
//
//   ForDots(17, 144)  gives 26,  ForDots(26, 96, 144)  gives 17
inline int ForDots(std::int64_t length, int dots, int before = kUsualDpi) {
  const std::int64_t product = length * dots;
  return static_cast<int>((product + (product < 0 ? -before : before) / 2) / before);
}

}  // namespace lorv
