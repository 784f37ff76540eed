#include "compress/lzari/lzari_model.h"

#include <algorithm>

// The adaptive model of symbols, ordered by falling frequency. A cumulative frequency is the sum of a block's
// base and a rest within it, so adding one to a symbol touches a few blocks and one row instead of all
// numbers behind it. Symbols of one frequency are a group, whose first is the one that moves up.

namespace lorv::lzari {

void SymbolModel::SetCumulative(const std::array<int, kSymbols + 1>& cumulative) {
  base_.fill(0);
  rest_.fill(0);
  for (std::size_t block = 0; block < kBlocks; ++block) {
    const std::size_t last = block * kBlock + kBlock - 1;
    base_[block] = static_cast<std::int16_t>(last <= kSymbols ? cumulative[last] : 0);
  }
  for (std::size_t i = 0; i <= kSymbols; ++i) {
    rest_[i] = static_cast<std::int16_t>(cumulative[i] - base_[i / kBlock]);
  }
}

// Groups of equal frequency stand together, as the symbols are in falling order of it.
void SymbolModel::FormGroups() {
  free_count_ = 0;
  for (int group = kSymbols; group >= 1; --group) {
    free_groups_[static_cast<std::size_t>(free_count_++)] = static_cast<std::int16_t>(group);
  }
  group_[0] = group_[kSymbols + 1] = 0;
  for (std::size_t i = 1; i <= kSymbols; ++i) {
    if (frequency_[i] == frequency_[i - 1]) {
      group_[i] = group_[i - 1];
      continue;
    }
    group_[i] = free_groups_[static_cast<std::size_t>(--free_count_)];
    first_[static_cast<std::size_t>(group_[i])] = static_cast<std::int16_t>(i);
  }
}

void SymbolModel::StartModel() {
  std::array<int, kSymbols + 1> cumulative{};
  for (int s = kSymbols; s >= 1; --s) {
    const auto at = static_cast<std::size_t>(s);
    char_to_symbol_[at - 1] = static_cast<std::int16_t>(s);
    symbol_to_char_[at] = static_cast<std::int16_t>(s - 1);
    frequency_[at] = 1;
    cumulative[at - 1] = cumulative[at] + 1;
  }
  frequency_[0] = 0;
  SetCumulative(cumulative);
  FormGroups();
}

void SymbolModel::HalveFrequencies() {
  std::array<int, kSymbols + 1> cumulative{};
  int sum = 0;
  for (std::size_t i = kSymbols; i > 0; --i) {
    cumulative[i] = sum;
    frequency_[i] = static_cast<std::int16_t>((frequency_[i] + 1) >> 1);
    sum += frequency_[i];
  }
  cumulative[0] = sum;
  SetCumulative(cumulative);
  FormGroups();
}

}  // namespace lorv::lzari
