#pragma once

namespace lorv::tool {

// A sum that keeps what plain addition loses: the total of a million components does not depend on their
// order by more than its last digit.
class Sum {
 public:
  void Add(double value);
  double Value() const { return sum_ + lost_; }

 private:
  double sum_ = 0;
  double lost_ = 0;
};

}  // namespace lorv::tool
