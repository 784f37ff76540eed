#include "gridcore/items/cell_block.h"

#include <algorithm>
#include <cstddef>
#include <new>

#include "framework/native/poisoned_memory.h"
#include "gridcore/items/grid_item.h"

// Cells side by side behind a short head. A cell knows its number there, so it needs no pointer to the block.

namespace lorv {
namespace {

constexpr std::size_t kCellBytes = sizeof(CBCGPGridItem);

// The cell that is destroyed and whose memory comes back next: where it stood is nothing that its memory
// shows any more.
struct EndedCell {
  void* memory = nullptr;
  unsigned slot = 0;
};
constinit thread_local EndedCell g_ended;

}  // namespace

CellBlock* CellBlock::Create(int cells) {
  static_assert(sizeof(CellBlock) % alignof(CBCGPGridItem) == 0);
  const auto room = static_cast<unsigned char>(std::clamp(cells, 1, kMostCells));
  void* const memory = ::operator new(sizeof(CellBlock) + room * kCellBytes);
  auto* const block = new (memory) CellBlock(room);
  PoisonMemory(block->Place(1), room * kCellBytes);
  return block;
}

std::byte* CellBlock::Place(unsigned slot) {
  return static_cast<std::byte*>(static_cast<void*>(this + 1)) + (slot - 1) * kCellBytes;
}

CBCGPGridItem* CellBlock::Make() {
  if (IsFull()) return nullptr;
  const unsigned slot = made_ + 1U;
  std::byte* const place = Place(slot);
  UnpoisonMemory(place, kCellBytes);
  auto* const cell = new (place) CBCGPGridItem;
  cell->slot_ = slot & kMostCells;
  made_ = static_cast<unsigned char>(slot);
  ++users_;
  return cell;
}

void CellBlock::NoteEnd(void* memory, unsigned slot) noexcept {
  g_ended = {memory, slot};
}

bool CellBlock::TakeBack(void* memory) noexcept {
  if (memory == nullptr || memory != g_ended.memory) return false;
  std::byte* const head =
      static_cast<std::byte*>(memory) - (g_ended.slot - 1) * kCellBytes - sizeof(CellBlock);
  g_ended = {};
  PoisonMemory(memory, kCellBytes);
  std::launder(static_cast<CellBlock*>(static_cast<void*>(head)))->Release();
  return true;
}

void CellBlock::Release() {
  if (--users_ > 0) return;
  UnpoisonMemory(Place(1), room_ * kCellBytes);
  ::operator delete(static_cast<void*>(this));
}

}  // namespace lorv
