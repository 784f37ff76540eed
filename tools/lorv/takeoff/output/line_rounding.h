#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lorv::tool {

// A number as it is shown with some decimals; never "-0.000".
std::string Shown(double value, int decimals);

// Numbers rounded to some decimals so that they add up to their sum as it is shown: each is cut, and what is
// then missing goes, a last digit each, to those that lost most by it (the largest remainder).
//
// Result: what is shown of each, in steps of the last decimal; nothing where the numbers have too many digits
//   for that. `total` is the sum as shown, in such steps.
//
//   {0.4, 0.4, 0.4} with 0 decimals and the total 1  gives {1, 0, 0}
std::optional<std::vector<long long>> SharedOut(const std::vector<double>& values, int decimals,
                                                long long total);

// A number in steps of the last decimal, rounded as it is shown; nothing where it has too many digits.
std::optional<long long> InSteps(double value, int decimals);

// The number of that many steps.
std::string ShownSteps(long long steps, int decimals);

}  // namespace lorv::tool
