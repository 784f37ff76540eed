#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "compress/lzari/lzari_model.h"
#include "compress/lzari/row_of_eight.h"

// The steps of the model that are made once a symbol.
namespace lorv::lzari {

inline void SymbolModel::Swap(int symbol, int other) {
  std::int16_t& a = symbol_to_char_[static_cast<std::size_t>(symbol)];
  std::int16_t& b = symbol_to_char_[static_cast<std::size_t>(other)];
  std::swap(a, b);
  char_to_symbol_[static_cast<std::size_t>(a)] = static_cast<std::int16_t>(symbol);
  char_to_symbol_[static_cast<std::size_t>(b)] = static_cast<std::int16_t>(other);
}

// The first of its group leaves it, upwards: into the group in front if that has its new frequency.
inline void SymbolModel::CountOneMore(int symbol) {
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

inline void SymbolModel::AddToFirst(std::int16_t* row, int count) {
  static constexpr std::array<std::int16_t, 8> kPlaces = {0, 1, 2, 3, 4, 5, 6, 7};
  StoreRow(row, Subtract(LoadRow(row), Greater(FillRow(count), LoadRow(kPlaces.data()))));
}

inline void SymbolModel::UpdateModel(int symbol) {
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

// The counts fall along a row, so those above the point stand at its beginning.
inline int SymbolModel::BinarySearchSym(std::uint32_t x) const {
  const int point = static_cast<int>(std::min<std::uint32_t>(x, kMaxCumulative));
  const RowOfEight points = FillRow(point);
  const auto above = [](const std::int16_t* row, RowOfEight than) { return Greater(LoadRow(row), than); };
  const std::uint32_t blocks = Bits(above(&base_[0], points), above(&base_[8], points)) |
                               Bits(above(&base_[16], points), FillRow(0)) << 16;
  const int block = std::countr_one(blocks);
  const RowOfEight rests = FillRow(point - base_[static_cast<std::size_t>(block)]);
  const std::int16_t* rest = &rest_[static_cast<std::size_t>(block) * kBlock];
  const int symbol = block * kBlock + std::countr_one(Bits(above(rest, rests), above(rest + 8, rests)));
  return std::max(symbol, 1);
}

}  // namespace lorv::lzari
