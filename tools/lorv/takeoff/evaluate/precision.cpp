#include "tools/lorv/takeoff/evaluate/precision.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "framework/text/number_text.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"

// Holds what the suite's numbers (three decimals, thirds) come to against what all digits give, for a run
// with --suite-values. A user who wonders why the suite's bill differs from his own finds here by how much,
// in single values and in totals.

namespace lorv::tool {
namespace {

// Two digits, and no fraction of large shares.
std::string InPerCent(double share) {
  const double per_cent = share * 100;
  return per_cent < 10 ? RealToText(per_cent, 'g', 2) : RealToText(per_cent, 'f', 0);
}

}  // namespace

void Precision::Add(const std::vector<Result>& results, double count) {
  for (const Result& result : results) {
    const bool is_evaluated = result.state == Result::kEvaluated;
    // A row that gave nothing counts where its condition alone was decided otherwise: with all digits there
    // would have been a number, or another one.
    const int quantity = is_evaluated || result.decided_otherwise ? quantities_.Of(result.rule) : -1;
    if (quantity < 0) continue;
    Moved& moved = moved_[static_cast<std::size_t>(quantity)];
    ++moved.values;
    const bool is_known = is_evaluated && std::isfinite(result.exact);
    // Without a number to compare with, the totals take the same one on both sides: only what is
    // known makes them differ.
    moved.total.Add(is_evaluated ? result.value * count : 0);
    moved.exact_total.Add(is_known ? result.exact * count : is_evaluated ? result.value * count : 0);
    const double change = is_known ? std::fabs(result.value - result.exact) : 0;
    if (is_known && !(change > LastDigit(static_cast<std::size_t>(quantity)))) continue;
    ++moved.differ;
    // What cannot be set in relation counts as wholly different.
    const double share = is_known && result.exact != 0 ? change / std::fabs(result.exact) : 1;
    moved.largest = std::max(moved.largest, share);
  }
}

double Precision::LastDigit(std::size_t quantity) const {
  return std::pow(10.0, -quantities_.List()[quantity].Decimals());
}

// Many values may each stay within their last digit, and their sum does not.
// Averages and extremes of totals are no sums: their single values are compared above.
bool Precision::TotalDiffers(std::size_t quantity) const {
  if (quantities_.List()[quantity].HowTotalled() != Totalling::kSum) return false;
  const Moved& moved = moved_[quantity];
  return std::fabs(moved.total.Value() - moved.exact_total.Value()) > LastDigit(quantity);
}

double Precision::ShareOfTotal(std::size_t quantity) const {
  if (!TotalDiffers(quantity)) return 0;
  // A share of zero is not defined; a total that should be nothing and is not differs wholly.
  const double exact = moved_[quantity].exact_total.Value();
  return exact == 0 ? 1 : std::fabs((moved_[quantity].total.Value() - exact) / exact);
}

bool Precision::IsCoarse() const {
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    if (std::max(moved_[i].largest, ShareOfTotal(i)) > kTolerable) return true;
  }
  return false;
}

void Precision::PrintTotal(std::ostream& out, std::size_t quantity) const {
  if (!TotalDiffers(quantity)) return;
  const Quantity& of = quantities_.List()[quantity];
  const Moved& moved = moved_[quantity];
  // Two digits more than the bill has: with the bill's own, both numbers may look the same.
  const int decimals = std::min(of.Decimals() + 2, kMostDecimals);
  out << "lorv: "
      << Say("note: the total of \"{}\" is {}, with all digits of the values {}",
             {Printable(of.name), RealToText(moved.total.Value(), 'f', decimals),
              RealToText(moved.exact_total.Value(), 'f', decimals)})
      << "\n";
}

void Precision::Print(std::ostream& out) const {
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    PrintTotal(out, i);
    if (moved_[i].differ == 0) continue;
    out << "lorv: "
        << Say("note: {} of {} values of \"{}\" differ from those with all digits, by up to {} %: the suite "
               "works with "
               "three decimals, and with a third for what is near one",
               {std::to_string(moved_[i].differ), std::to_string(moved_[i].values),
                Printable(quantities_.List()[i].name), InPerCent(moved_[i].largest)})
        << "\n";
  }
}

void Precision::Write(JsonText& json) const {
  json.Key("precision").Open('[');
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    // Quantities that the suite gives as they are would only hide the others.
    if (moved_[i].differ == 0 && !TotalDiffers(i)) continue;
    json.Open('{');
    json.Key("quantity").String(quantities_.List()[i].name);
    json.Key("unit").String(quantities_.List()[i].unit);
    json.Key("values").Number(moved_[i].values);
    json.Key("differ").Number(moved_[i].differ);
    json.Key("largest_share").Number(moved_[i].largest);
    json.Key("total").Number(moved_[i].total.Value());
    json.Key("total_with_all_digits").Number(moved_[i].exact_total.Value());
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
