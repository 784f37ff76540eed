#include "tools/lorv/takeoff/evaluate/exact_sum.h"

#include <cmath>

// The sum behind every total of a bill, with compensation for what additions lose. Components come in
// the order of the model, and a total that changed with that order would look like an error to
// whoever compares two exports.

namespace lorv::tool {

// What an addition loses is kept beside the sum. The smaller of both is the one that loses digits, so the
// loss is measured from the larger.
void Sum::Add(double value) {
  const double sum = sum_ + value;
  lost_ += std::fabs(sum_) >= std::fabs(value) ? (sum_ - sum) + value : (value - sum) + sum_;
  sum_ = sum;
}

}  // namespace lorv::tool
