#include "tools/lorv/takeoff/evaluate/precision.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

#include "framework/text/number_text.h"
#include "tools/lorv/text/display_width.h"
#include "tools/lorv/text/spoken_language.h"

namespace lorv::tool {

void Precision::Add(const std::vector<Result>& results) {
  for (const Result& result : results) {
    const int quantity = result.state == Result::kWorked ? quantities_.Of(result.rule) : -1;
    if (quantity < 0) continue;
    Moved& moved = moved_[static_cast<std::size_t>(quantity)];
    ++moved.values;
    const double change = std::fabs(result.value - result.exact);
    const int decimals = quantities_.List()[static_cast<std::size_t>(quantity)].decimals;
    if (!(change > std::pow(10.0, -decimals))) continue;
    ++moved.differ;
    const double share =
        result.exact == 0 ? std::numeric_limits<double>::infinity() : change / std::fabs(result.exact);
    moved.largest = std::max(moved.largest, std::isfinite(result.exact) ? share : 1);
  }
}

bool Precision::IsCoarse() const {
  return std::any_of(moved_.begin(), moved_.end(),
                     [](const Moved& moved) { return moved.largest > kTolerable; });
}

void Precision::Print(std::ostream& out) const {
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    if (moved_[i].differ == 0) continue;
    out << "lorv: "
        << Say("note: {} of {} values of \"{}\" differ from those with all digits, by up to {} %: the suite "
               "works with "
               "three decimals, and with a third for what is near one",
               {std::to_string(moved_[i].differ), std::to_string(moved_[i].values),
                Printable(quantities_.List()[i].name), RealToText(moved_[i].largest * 100, 'g', 2)})
        << "\n";
  }
}

void Precision::Write(JsonText& json) const {
  json.Key("precision").Open('[');
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    if (moved_[i].differ == 0) continue;
    json.Open('{');
    json.Key("quantity").String(quantities_.List()[i].name);
    json.Key("unit").String(quantities_.List()[i].unit);
    json.Key("values").Number(moved_[i].values);
    json.Key("differ").Number(moved_[i].differ);
    json.Key("largest_share").Number(moved_[i].largest);
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
