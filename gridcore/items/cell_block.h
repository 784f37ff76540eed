#pragma once

#include <cstddef>
#include <memory>

class CBCGPGridItem;

namespace lorv {

// The memory of the plain cells of one row. A table of a million cells would ask the heap for each one, which
// takes longer than all else that is done to make it, and costs it a head of 16 bytes.
//
// Edges: at most kMostCells; Make() gives null once all of them were made, and a cell that is gone leaves its
//   place empty to the end of the block.
// The block belongs to its cells and to the one that fills it: it goes with the last of them, so a cell may
// outlive its row. One thread, that of the cells. Under the address sanitizer the place of a cell that is
// gone is as forbidden as freed memory.
class CellBlock {
 public:
  static constexpr int kMostCells = 127;

  // Room for so many cells, but at least 1 and at most kMostCells. The caller leaves it by Release(), as
  // CellBlockUser does.
  static CellBlock* Create(int cells);
  CellBlock(const CellBlock&) = delete;
  CellBlock& operator=(const CellBlock&) = delete;

  bool IsFull() const { return made_ == room_; }
  // A plain cell without a value; null where the block is full.
  CBCGPGridItem* Make();
  void Release();

  // A cell of a block is destroyed; its memory is given back next, on the same thread.
  static void NoteEnd(void* memory, unsigned slot) noexcept;
  // Whether the memory was that of a cell of a block, which then has it back.
  static bool TakeBack(void* memory) noexcept;

 private:
  explicit CellBlock(unsigned char room) : room_(room) {}
  ~CellBlock() = default;
  std::byte* Place(unsigned slot);

  unsigned users_ = 1;
  unsigned char room_;
  unsigned char made_ = 0;
};

struct CellBlockLeaver {
  void operator()(CellBlock* block) const { block->Release(); }
};

using CellBlockUser = std::unique_ptr<CellBlock, CellBlockLeaver>;

}  // namespace lorv
