#pragma once

#include <cstddef>

namespace lorv::tool {

constexpr std::size_t kMaxRules = 10000;        // rows of a rules file
constexpr std::size_t kMaxBillLines = 1000000;  // totals by class, storey and quantity
constexpr std::size_t kMaxProblems = 10000;     // different messages about formulas and values
constexpr double kLargestDimension = 1e15;      // of a dimension, without its sign
constexpr int kMostDecimals = 10;               // of a quantity as shown
constexpr int kDecimals = 3;                    // where the rule names none

}  // namespace lorv::tool
