#include "tools/lorv/takeoff/evaluate/exact_sum.h"

#include <cmath>

namespace lorv::tool {

// What an addition loses is kept beside the sum: the smaller of both loses it.
void Sum::Add(double value) {
  const double sum = sum_ + value;
  lost_ += std::fabs(sum_) >= std::fabs(value) ? (sum_ - sum) + value : (value - sum) + sum_;
  sum_ = sum;
}

}  // namespace lorv::tool
