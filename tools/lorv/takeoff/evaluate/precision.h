#pragma once

#include <iosfwd>
#include <vector>

#include "tools/lorv/takeoff/evaluate/component_evaluator.h"
#include "tools/lorv/takeoff/evaluate/exact_sum.h"
#include "tools/lorv/takeoff/evaluate/quantities.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// How far the suite's values, with three decimals and thirds, moved quantities from what they are with all
// digits.
class Precision {
 public:
  // A share by which a quantity may differ before the bill counts as wrong: a tenth of a per cent.
  static constexpr double kTolerable = 0.001;

  explicit Precision(const Quantities& quantities)
      : quantities_(quantities), moved_(quantities.List().size()) {}

  // The results of a row that stands for `count` components.
  void Add(const std::vector<Result>& results, double count);

  // Whether any quantity differs by more than kTolerable.
  bool IsCoarse() const;
  void Print(std::ostream& out) const;
  void Write(JsonText& json) const;

 private:
  struct Moved {
    long long values = 0;
    long long differ = 0;  // by more than the last digit that is shown
    double largest = 0;    // of those, as a share
    Sum total;
    Sum exact_total;
  };

  double LastDigit(std::size_t quantity) const;
  bool TotalDiffers(std::size_t quantity) const;
  double ShareOfTotal(std::size_t quantity) const;
  void PrintTotal(std::ostream& out, std::size_t quantity) const;

  const Quantities& quantities_;
  std::vector<Moved> moved_;
};

}  // namespace lorv::tool
