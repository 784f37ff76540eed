#pragma once

#include <vector>

class CBCGPGridRow;

namespace lorv {

// Rows within one another; a row deeper than that is refused. Rows end recursively, so the depth has a limit.
constexpr int kMaxRowLevels = 64;

// What a row keeps that has others nested in it.
struct SubRows {
  std::vector<CBCGPGridRow*> rows;  // one level below, in order; the row's own
  int below = 0;                    // at all levels
  bool expanded = true;
};

}  // namespace lorv
