#include "compress/lzari_model.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace lorv::lzari {
namespace {

// Eight counts at a time. All counts stay below 32768, so signed lanes compare rightly.
using Row = std::int16_t __attribute__((vector_size(16)));
constexpr Row kPlaces = {0, 1, 2, 3, 4, 5, 6, 7};

Row LoadRow(const std::int16_t* from) {
  Row row;
  std::memcpy(&row, from, sizeof row);
  return row;
}

Row Fill(int value) {
  return Row{} + static_cast<std::int16_t>(value);
}

// The sum of eight small counts.
int Sum(Row row) {
  std::array<std::uint64_t, 2> halves;
  std::memcpy(halves.data(), &row, sizeof row);
  return static_cast<int>(((halves[0] + halves[1]) * 0x0001000100010001U) >> 48);
}

// Adds 1 to the first `count` of eight.
void AddToFirst(std::int16_t* row, int count) {
  const Row sum = LoadRow(row) - (kPlaces < Fill(count));
  std::memcpy(row, &sum, sizeof sum);
}

struct PositionTable {
  std::array<std::int16_t, kWindow + 1 + 8> cumulative{};
  std::array<std::int16_t, 2048> first_of_16{};  // the position that owns the last of 16 points
};

constexpr PositionTable MakePositionTable() {
  PositionTable table;
  for (std::size_t i = kWindow; i >= 1; --i) {
    table.cumulative[i - 1] =
        static_cast<std::int16_t>(table.cumulative[i] + 10000 / static_cast<int>(i + 200));
  }
  std::size_t position = kWindow;
  for (std::size_t block = 0; block < table.first_of_16.size(); ++block) {
    const int last = static_cast<int>(block * 16 + 15);
    while (position > 1 && table.cumulative[position - 1] <= last) --position;
    table.first_of_16[block] = static_cast<std::int16_t>(position);
  }
  return table;
}

constexpr PositionTable kPositions = MakePositionTable();
constexpr auto kPositionTotal = static_cast<std::uint32_t>(kPositions.cumulative[0]);
static_assert(kPositionTotal < 2048 * 16);

}  // namespace

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

void SymbolModel::Swap(int symbol, int other) {
  std::int16_t& a = symbol_to_char_[static_cast<std::size_t>(symbol)];
  std::int16_t& b = symbol_to_char_[static_cast<std::size_t>(other)];
  std::swap(a, b);
  char_to_symbol_[static_cast<std::size_t>(a)] = static_cast<std::int16_t>(symbol);
  char_to_symbol_[static_cast<std::size_t>(b)] = static_cast<std::int16_t>(other);
}

// The first of its group leaves it, upwards: into the group in front if that has its new frequency.
void SymbolModel::CountOneMore(int symbol) {
  const auto at = static_cast<std::size_t>(symbol);
  const std::int16_t old_group = group_[at];
  const std::int16_t frequency = ++frequency_[at];
  const bool emptied = group_[at + 1] != old_group;
  first_[static_cast<std::size_t>(old_group)] = static_cast<std::int16_t>(symbol + 1);
  if (frequency_[at - 1] == frequency) {
    group_[at] = group_[at - 1];
    free_groups_[static_cast<std::size_t>(free_count_)] = old_group;
    free_count_ += emptied ? 1 : 0;
    return;
  }
  const std::int16_t group = emptied ? old_group : free_groups_[static_cast<std::size_t>(--free_count_)];
  group_[at] = group;
  first_[static_cast<std::size_t>(group)] = static_cast<std::int16_t>(symbol);
}

void SymbolModel::UpdateModel(int symbol) {
  if (Total() >= kMaxCumulative) [[unlikely]]
    HalveFrequencies();
  const int first = first_[static_cast<std::size_t>(group_[static_cast<std::size_t>(symbol)])];
  if (first < symbol) Swap(first, symbol);
  CountOneMore(first);
  const int block = first / kBlock;
  for (int row = 0; row < kBases; row += 8) AddToFirst(&base_[static_cast<std::size_t>(row)], block - row);
  std::int16_t* rest = &rest_[static_cast<std::size_t>(block) * kBlock];
  AddToFirst(rest, first % kBlock);
  AddToFirst(rest + 8, first % kBlock - 8);
}

int SymbolModel::BinarySearchSym(std::uint32_t x) const {
  const int point = static_cast<int>(std::min<std::uint32_t>(x, kMaxCumulative));
  const Row points = Fill(point);
  Row above = (LoadRow(&base_[0]) > points) + (LoadRow(&base_[8]) > points) + (LoadRow(&base_[16]) > points);
  const int block = Sum(-above);
  const Row rests = points - Fill(base_[static_cast<std::size_t>(block)]);
  const std::int16_t* rest = &rest_[static_cast<std::size_t>(block) * kBlock];
  above = (LoadRow(rest) > rests) + (LoadRow(rest + 8) > rests);
  return std::max(block * kBlock + Sum(-above), 1);
}

Share PositionShare(int position) {
  const auto at = static_cast<std::size_t>(position);
  return {static_cast<std::uint32_t>(kPositions.cumulative[at + 1]),
          static_cast<std::uint32_t>(kPositions.cumulative[at]), kPositionTotal};
}

std::uint32_t PositionTotal() {
  return kPositionTotal;
}

int BinarySearchPos(std::uint32_t x) {
  const auto point = std::min(x, kPositionTotal - 1);
  const auto first = static_cast<std::size_t>(kPositions.first_of_16[point / 16]);
  const Row above = LoadRow(&kPositions.cumulative[first]) > Fill(static_cast<int>(point));
  return static_cast<int>(first) + Sum(-above) - 1;
}

}  // namespace lorv::lzari
