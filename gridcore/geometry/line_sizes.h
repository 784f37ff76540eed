#pragma once

#include <cstdint>
#include <vector>

#include "framework/native/export.h"

namespace lorv {

// The sizes of the rows or columns of a table, one behind the other, and where each begins. It stands between
// the table and the screen: scrolling, hit tests and painting ask it for the lines of a page, and the answer
// must not cost more in a table of ten million rows than in one of ten.
//
// Units: lines count from 0, sizes and offsets are pixels. A hidden line has the size 0.
// Edges: a negative size counts as 0. Lines and counts outside the table are cut to what is there; asked for
//   such a line, SizeOf gives 0, OffsetOf the nearest edge. No offset overflows: they have 64 bits.
// Cost: neighbouring lines of one size take one entry together, others are kept in blocks of kMostInBlock. A
//   look-up is a search among blocks, a change moves one block.
// One thread at a time.
//
//   LineSizes rows;  rows.Insert(0, 100, 20);  rows.SetSize(3, 1, 50);
//   rows.OffsetOf(4)  gives 110, rows.LineAt(109)  gives 3
class COMM_LORV_API LineSizes {
 public:
  static constexpr int kMostInBlock = 256;

  int Count() const { return count_; }
  std::int64_t Total() const { return total_; }
  int SizeOf(int line) const;
  // Where the line begins; of the line behind the last one: the total.
  std::int64_t OffsetOf(int line) const;
  // The line on which that pixel lies, never a hidden one; -1 before the first and behind the last.
  int LineAt(std::int64_t offset) const;

  // Puts `count` lines in front of the line `before`.
  void Insert(int before, int count, int size);
  void Remove(int first, int count);
  void SetSize(int first, int count, int size);
  void Clear();

 private:
  // Lines of one size (`sizes` is empty), or of any sizes.
  struct Block {
    int count = 0;
    int size = 0;
    std::int64_t total = 0;
    std::vector<int> sizes;

    int SizeAt(int line) const { return sizes.empty() ? size : sizes[static_cast<std::size_t>(line)]; }
    std::int64_t OffsetAt(int line) const;
    int LineAt(std::int64_t offset) const;
    bool Joins(const Block& next) const;
    void Join(const Block& next);
    Block CutFrom(int line);
  };
  struct Start {
    int line = 0;
    std::int64_t offset = 0;
  };

  static Block Uniform(int count, int size);
  void Locate(std::size_t block) const;
  std::size_t BlockOf(int line) const;
  std::size_t CutAt(int line);
  void JoinAround(std::size_t block);
  void Changed(std::size_t from) const;

  std::vector<Block> blocks_;
  // Where blocks begin: right for those before located_, the others follow when they are asked for.
  mutable std::vector<Start> starts_;
  mutable std::size_t located_ = 0;
  int count_ = 0;
  std::int64_t total_ = 0;
};

}  // namespace lorv
