#include "spreadsheet/servers/engine/book/cell_store.h"

#include <algorithm>
#include <iterator>

// Cells by row and column in sorted blocks. Files bring their cells in order and the exchange
// goes along rows, so the place that was found last is tried first, and a cell behind all others
// is added without a search.

namespace lorv::engine {
namespace {

// 64 KB: an insertion in the middle moves no more than that.
constexpr std::size_t kBlockCells = 4096;

}  // namespace

CellStore::Place CellStore::Seek(std::uint64_t key) const {
  if (Holds(last_, key)) return last_;
  if (const Place next = {last_.block, last_.cell + 1}; Holds(next, key)) return next;
  // Behind the last cell, where a workbook that is being written or read goes on.
  if (blocks_.empty() || blocks_.back().back().key() < key) {
    return blocks_.empty() ? Place{} : Place{blocks_.size() - 1, blocks_.back().size()};
  }
  // No block is ever empty, so the last cell of each orders them.
  const auto block = std::partition_point(blocks_.begin(), blocks_.end(),
                                          [&](const auto& cells) { return cells.back().key() < key; });
  const auto cell =
      std::partition_point(block->begin(), block->end(), [&](const Cell& each) { return each.key() < key; });
  return {static_cast<std::size_t>(block - blocks_.begin()), static_cast<std::size_t>(cell - block->begin())};
}

const Cell* CellStore::Find(long row, long column) const {
  const std::uint64_t key = Cell::Key(row, column);
  const Place place = Seek(key);
  if (!Holds(place, key)) return nullptr;
  last_ = place;
  return &blocks_[place.block][place.cell];
}

Cell& CellStore::At(long row, long column) {
  const std::uint64_t key = Cell::Key(row, column);
  const Place place = Seek(key);
  if (!Holds(place, key)) return Insert(place, key);
  last_ = place;
  return blocks_[place.block][place.cell];
}

Cell& CellStore::Insert(Place place, std::uint64_t key) {
  // Most sheets that users look at are small; the first block begins so.
  if (blocks_.empty()) blocks_.emplace_back().reserve(16);
  if (blocks_[place.block].size() >= kBlockCells) {
    auto& full = blocks_[place.block];
    const bool at_end = place.block + 1 == blocks_.size() && place.cell == full.size();
    // A block filled in order stays whole; another is parted in the middle.
    const std::size_t kept = at_end ? full.size() : full.size() / 2;
    std::vector<Cell> rest;
    rest.reserve(at_end ? kBlockCells : kBlockCells / 2 + 1);
    rest.assign(full.begin() + static_cast<std::ptrdiff_t>(kept), full.end());
    full.resize(kept);
    blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block) + 1, std::move(rest));
    if (place.cell >= kept) place = {place.block + 1, place.cell - kept};
  }
  auto& cells = blocks_[place.block];
  cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(place.cell), Cell(key, 0));
  ++size_;
  last_ = place;
  return cells[place.cell];
}

}  // namespace lorv::engine
