#pragma once

namespace lorv::tool {

// A sum with compensation for what plain addition loses: the total of a million components does not depend on
// their order by more than its last digit. Infinities and NaN make the value NaN or infinite.
//
//   Sum sum;  sum.Add(1e16);  sum.Add(1);  sum.Add(-1e16);  sum.Value()  gives 1
class Sum {
 public:
  void Add(double value);
  double Value() const { return sum_ + lost_; }

 private:
  double sum_ = 0;
  double lost_ = 0;
};

}  // namespace lorv::tool
