#include "platform/text/unit_order.h"

#include <algorithm>
#include <utility>

// The characters are put in order once; a comparison of texts is then one of numbers.

namespace lorv {

namespace {

// First characters of ban, ci, liang and zhu: their codes stand in another order.
constexpr TCHAR kBySound[] = {0x677F, 0x6B21, 0x6881, 0x67F1};

bool OrdersBySound(const SystemOrder& order) {
  std::string before;
  for (const TCHAR unit : kBySound) {
    std::string key = order.KeyOf(unit);
    if (key <= before) return false;
    before = std::move(key);
  }
  return true;
}

}  // namespace

UnitOrder UnitOrder::Made() {
  UnitOrder made;
  const SystemOrder order;
  // Not every system has an order by sound: then codes decide.
  if (!OrdersBySound(order)) return made;
  std::vector<std::pair<std::string, std::uint16_t>> keys;
  for (unsigned code = kFirst; code <= kLast; ++code)
    keys.emplace_back(order.KeyOf(static_cast<TCHAR>(code)), static_cast<std::uint16_t>(code));
  std::sort(keys.begin(), keys.end());
  made.weights_.resize(keys.size());
  for (std::size_t place = 0; place < keys.size(); ++place)
    made.weights_[static_cast<std::size_t>(keys[place].second - kFirst)] =
        static_cast<std::uint16_t>(kFirst + place);
  return made;
}

const UnitOrder& UnitOrder::ByCode() {
  static const UnitOrder order;
  return order;
}

const UnitOrder& UnitOrder::BySound() {
  static const UnitOrder order = Made();
  return order;
}

}  // namespace lorv
