#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "compress/lzari/lzari_format.h"

namespace lorv::lzari {

// The part of the range that a symbol owns, out of `total`.
struct Share {
  std::uint32_t lower;
  std::uint32_t upper;
  std::uint32_t total;
};

// The adaptive model of characters: symbols 1 to 314 in falling order of frequency, each with the sum of
// the frequencies behind it ("cumulative", so the one of 0 is the total).
//
// Two tables make what the plain algorithm does in loops a matter of a few steps. Cumulative counts are
// kept as a base for each block of 16 and the rest within the block, so adding 1 to all of a beginning
// touches one row of bases and one block; finding a symbol counts in the same two rows. And symbols of
// equal frequency form a group that knows its first, which is where an update swaps to.
class SymbolModel {
 public:
  void StartModel();

  // Defined in lzari_model_steps.h, to be inlined in the inner loops:

  // Counts one more of `symbol`, after halving all frequencies if the total has reached its limit.
  void UpdateModel(int symbol);

  // The symbol that owns the point `x` of the total; 1 for a point beyond it.
  int BinarySearchSym(std::uint32_t x) const;

  int SymbolOf(int character) const { return char_to_symbol_[static_cast<std::size_t>(character)]; }
  int CharacterOf(int symbol) const { return symbol_to_char_[static_cast<std::size_t>(symbol)]; }
  Share ShareOf(int symbol) const { return {Cumulative(symbol), Cumulative(symbol - 1), Total()}; }
  std::uint32_t Total() const { return Cumulative(0); }

 private:
  static constexpr int kBlock = 16;
  static constexpr int kBlocks = kSymbols / kBlock + 1;
  static constexpr int kBases = 24;  // a whole number of 8-wide rows

  std::uint32_t Cumulative(int symbol) const {
    return static_cast<std::uint32_t>(base_[static_cast<std::size_t>(symbol / kBlock)] +
                                      rest_[static_cast<std::size_t>(symbol)]);
  }
  void SetCumulative(const std::array<int, kSymbols + 1>& cumulative);
  void FormGroups();
  void HalveFrequencies();
  void CountOneMore(int symbol);
  void Swap(int symbol, int other);
  // Adds 1 to the first `count` of eight.
  static void AddToFirst(std::int16_t* row, int count);

  alignas(16) std::array<std::int16_t, kBases> base_{};
  alignas(16) std::array<std::int16_t, kBlocks * kBlock> rest_{};
  std::array<std::int16_t, kSymbols> char_to_symbol_{};
  std::array<std::int16_t, kSymbols + 1> symbol_to_char_{};
  std::array<std::int16_t, kSymbols + 1> frequency_{};
  std::array<std::int16_t, kSymbols + 2> group_{};  // of a symbol; the place behind the last is in none
  std::array<std::int16_t, kSymbols + 1> first_{};  // symbol of a group
  std::array<std::int16_t, kSymbols + 1> free_groups_{};
  int free_count_ = 0;
};

}  // namespace lorv::lzari
