// The greatest and the least int: the numbers of rows and columns that a hostile caller names.
#pragma once

#include <limits>

inline constexpr int kMost = std::numeric_limits<int>::max();
inline constexpr int kLeast = std::numeric_limits<int>::min();
