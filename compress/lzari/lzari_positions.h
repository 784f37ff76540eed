#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "compress/lzari/lzari_format.h"
#include "compress/lzari/lzari_model.h"

namespace lorv::lzari {

// The model of match positions, which favours near ones and never changes. A position counts from the last
// byte back.
struct PositionTable {
  static constexpr std::uint32_t kPoints = 8;  // points that share an entry of `first`

  std::array<std::uint16_t, kWindow + 1 + 4> cumulative{};
  std::array<std::uint16_t, 32768 / kPoints> first{};  // owns the last of these points, counted from 1
};

constexpr PositionTable MakePositionTable() {
  PositionTable table;
  for (std::size_t i = kWindow; i >= 1; --i) {
    table.cumulative[i - 1] = static_cast<std::uint16_t>(table.cumulative[i] + 10000 / (i + 200));
  }
  std::size_t position = kWindow;
  for (std::size_t block = 0; block < table.first.size(); ++block) {
    const std::size_t last = block * PositionTable::kPoints + PositionTable::kPoints - 1;
    while (position > 1 && table.cumulative[position - 1] <= last) --position;
    table.first[block] = static_cast<std::uint16_t>(position);
  }
  return table;
}

inline constexpr PositionTable kPositions = MakePositionTable();
inline constexpr std::uint32_t kPositionTotal = kPositions.cumulative[0];
static_assert(kPositionTotal < 32768);
// The far positions own two points each, so eight points have five owners at most.
static_assert(kPositions.cumulative[kWindow - 1] == 2);

inline Share PositionShare(int position) {
  const auto at = static_cast<std::size_t>(position);
  return {kPositions.cumulative[at + 1], kPositions.cumulative[at], kPositionTotal};
}

// The position that owns the point `x` of the total; 0 for a point beyond it.
inline int BinarySearchPos(std::uint32_t x) {
  const std::uint32_t point = std::min(x, kPositionTotal - 1);
  const std::size_t first = kPositions.first[point / PositionTable::kPoints];
  int position = static_cast<int>(first) - 1;
  for (std::size_t i = 0; i < 4; ++i) position += kPositions.cumulative[first + i] > point ? 1 : 0;
  return position;
}

}  // namespace lorv::lzari
