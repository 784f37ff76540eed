#include "tools/lorv/takeoff/output/line_rounding.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>

#include "framework/text/number_text.h"

// Rounds the lines of a bill so that they add up to their total as it is shown: who checks a bill
// with a calculator finds no last digit too many. Shares are whole steps of the last decimal, which
// add up without error.

namespace lorv::tool {
namespace {

// Whole numbers up to here are exact.
constexpr double kMostSteps = 1e15;

}  // namespace

std::string Shown(double value, int decimals) {
  const std::string text = RealToText(value, 'f', decimals);
  // What rounds to nothing has no sign: "-0.000" reads like a mistake.
  const bool zero = text.find_first_not_of("-0.") == std::string::npos;
  return zero ? RealToText(0, 'f', decimals) : text;
}

std::optional<long long> InSteps(double value, int decimals) {
  if (!(std::fabs(value) * std::pow(10.0, decimals) < kMostSteps)) return std::nullopt;
  // By its text, so that it is rounded as it would be shown alone.
  std::string digits = RealToText(value, 'f', decimals);
  digits.erase(std::remove(digits.begin(), digits.end(), '.'), digits.end());
  long long steps = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), steps);
  return steps;
}

std::string ShownSteps(long long steps, int decimals) {
  std::string digits = std::to_string(steps < 0 ? -steps : steps);
  const auto behind = static_cast<std::size_t>(decimals);
  if (digits.size() <= behind) digits.insert(0, behind + 1 - digits.size(), '0');
  if (decimals > 0) digits.insert(digits.size() - behind, ".");
  return steps < 0 ? "-" + digits : digits;
}

std::optional<std::vector<long long>> SharedOut(const std::vector<double>& values, int decimals,
                                                long long total) {
  const double step = std::pow(10.0, decimals);
  std::vector<long long> shares;
  std::vector<double> remainders;
  for (const double value : values) {
    const double steps = value * step;
    // Beyond exact whole numbers shares would no longer add up: such lines are rounded alone.
    if (!(std::fabs(steps) < kMostSteps)) return std::nullopt;
    // Down, also below zero: remainders are then all of one sign and can be compared.
    shares.push_back(static_cast<long long>(std::floor(steps)));
    remainders.push_back(steps - std::floor(steps));
  }
  const long long missing = total - std::accumulate(shares.begin(), shares.end(), 0LL);
  // A sum that was itself raised or lowered by a step may ask for one beyond its parts.
  const auto count = static_cast<long long>(values.size());
  if (missing < -count || missing > count) return std::nullopt;
  std::vector<std::size_t> order(values.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // Equal remainders go by the order of the lines, so that each run gives the same bill.
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return remainders[a] > remainders[b]; });
  for (long long i = 0; i < missing; ++i) ++shares[order[static_cast<std::size_t>(i)]];
  for (long long i = 0; i < -missing; ++i) --shares[order[order.size() - 1 - static_cast<std::size_t>(i)]];
  return shares;
}

}  // namespace lorv::tool
