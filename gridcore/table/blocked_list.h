#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace lorv {

// Where an element of a BlockedList stands. The element holds it for the list and does nothing with it.
struct ListPlace {
  const void* block = nullptr;
  std::size_t slot = 0;  // where it was last seen in the block
};

// A list of objects by number that knows the number of each object: the rows of a table, where a row is asked
// for its number as often as the table for a row. Objects stand in blocks of at most kMostInBlock, so that
// one that is put in or taken out moves a block and not the table.
//
// Units: numbers count from 0.
// Edges: At gives null outside the list, IndexOf -1 for an object that does not stand in it; an index beyond
//   the end inserts at the end. Take of an index outside gives null.
// Cost: At and IndexOf a search among blocks (a hundred thousand rows have a few hundred); Insert and Take
//   move one block, and the next look-up counts the blocks behind it again.
// The objects are the caller's and must outlive their stay; each holds its place in `place`. One thread at a
// time.
//
//   BlockedList<Row, &Row::place> rows;  rows.Insert(0, a);  rows.Insert(0, b);  rows.IndexOf(a)  gives 1
template <class T, ListPlace T::*place>
class BlockedList {
 public:
  static constexpr std::size_t kMostInBlock = 512;

  BlockedList() = default;
  BlockedList(const BlockedList&) = delete;
  BlockedList& operator=(const BlockedList&) = delete;

  int Size() const { return size_; }

  T* At(int index) const {
    if (index < 0 || index >= size_) return nullptr;
    const std::size_t block = BlockOf(index);
    return blocks_[block]->items[static_cast<std::size_t>(index - blocks_[block]->first)];
  }

  int IndexOf(const T& object) const {
    const auto* block = static_cast<const Block*>((object.*place).block);
    if (block == nullptr || block->list != this) return -1;
    Count(blocks_.size() - 1);
    return block->first + static_cast<int>(SlotOf(*block, object));
  }

  void Insert(int index, T& object) {
    index = std::clamp(index, 0, size_);
    const std::size_t at = Room(index);
    Block& block = *blocks_[at];
    const auto slot = static_cast<std::size_t>(index - block.first);
    block.items.insert(block.items.begin() + static_cast<std::ptrdiff_t>(slot), &object);
    object.*place = {&block, slot};
    ++size_;
    counted_ = std::min(counted_, at + 1);
  }

  T* Take(int index) {
    T* object = At(index);
    if (object == nullptr) return nullptr;
    const std::size_t at = BlockOf(index);
    Block& block = *blocks_[at];
    block.items.erase(block.items.begin() + (index - block.first));
    object->*place = {};
    --size_;
    counted_ = std::min(counted_, at + 1);
    if (block.items.empty()) Drop(at);
    return object;
  }

  void Clear() {
    ForEach([](T& object) { object.*place = {}; });
    blocks_.clear();
    size_ = 0;
    counted_ = 0;
  }

  // In order. The function must leave the list as it is.
  template <class Function>
  void ForEach(Function function) const {
    for (const auto& block : blocks_)
      for (T* object : block->items) function(*object);
  }

  // Brings the objects into the order of the vector, which holds each of them once.
  void Arrange(const std::vector<T*>& order) {
    Clear();
    for (T* object : order) Insert(size_, *object);
  }

 private:
  struct Block {
    const BlockedList* list = nullptr;
    int first = 0;  // the index of its first object
    std::vector<T*> items;
  };

  // The first indices of blocks before counted_ are right; the others follow when they are asked for.
  void Count(std::size_t block) const {
    for (; counted_ <= block; ++counted_) {
      Block& counted = *blocks_[counted_];
      if (counted_ == 0)
        counted.first = 0;
      else
        counted.first = blocks_[counted_ - 1]->first + static_cast<int>(blocks_[counted_ - 1]->items.size());
    }
  }

  std::size_t BlockOf(int index) const {
    // Who goes through a table, or fills it at its end, stays in a block for long.
    if (seen_ < counted_ && Holds(*blocks_[seen_], index)) return seen_;
    return seen_ = FindBlock(index);
  }

  static bool Holds(const Block& block, int index) {
    return index >= block.first && static_cast<std::size_t>(index - block.first) < block.items.size();
  }

  std::size_t FindBlock(int index) const {
    if (!blocks_.empty()) Count(blocks_.size() - 1);
    const auto behind = std::upper_bound(blocks_.begin(), blocks_.end(), index,
                                         [](int at, const auto& block) { return at < block->first; });
    return static_cast<std::size_t>(std::distance(blocks_.begin(), behind)) - 1;
  }

  std::size_t SlotOf(const Block& block, const T& object) const {
    // The place is the list's own note and no part of what the object is.
    ListPlace& seen = const_cast<T&>(object).*place;
    if (seen.slot >= block.items.size() || block.items[seen.slot] != &object) {
      const auto found = std::find(block.items.begin(), block.items.end(), &object);
      seen.slot = static_cast<std::size_t>(std::distance(block.items.begin(), found));
    }
    return seen.slot;
  }

  // A block with room for an object at the index.
  std::size_t Room(int index) {
    if (blocks_.empty()) Add(0);
    std::size_t at = index == size_ ? blocks_.size() - 1 : BlockOf(index);
    Count(at);
    if (blocks_[at]->items.size() < kMostInBlock) return at;
    Add(at + 1);
    // At the end of the list nothing is moved: rows that are appended fill their blocks.
    if (index == size_) {
      Count(at + 1);
      return at + 1;
    }
    MoveHalf(*blocks_[at], *blocks_[at + 1]);
    Count(at + 1);
    return index > blocks_[at + 1]->first ? at + 1 : at;
  }

  void MoveHalf(Block& from, Block& to) {
    const auto half = from.items.begin() + static_cast<std::ptrdiff_t>(kMostInBlock / 2);
    to.items.assign(half, from.items.end());
    from.items.erase(half, from.items.end());
    for (std::size_t slot = 0; slot < to.items.size(); ++slot) to.items[slot]->*place = {&to, slot};
  }

  void Add(std::size_t at) {
    auto block = std::make_unique<Block>();
    block->list = this;
    blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(at), std::move(block));
    counted_ = std::min(counted_, at);
  }

  void Drop(std::size_t at) {
    blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(at));
    counted_ = std::min(counted_, at);
  }

  std::vector<std::unique_ptr<Block>> blocks_;
  mutable std::size_t counted_ = 0;
  mutable std::size_t seen_ = 0;  // the block that was found last
  int size_ = 0;
};

}  // namespace lorv
