#include "gridcore/table/merged_cells.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "gridcore/geometry/range_lines.h"

// Blocks of merged cells, by their first row. Beside each stands how far down any block up to it reaches, so
// a search upwards ends at the first that cannot reach the row any more.

namespace lorv {
namespace {

bool StandsBefore(const CBCGPGridRange& a, const CBCGPGridRange& b) {
  return std::pair(a.m_nTop, a.m_nLeft) < std::pair(b.m_nTop, b.m_nLeft);
}

}  // namespace

CBCGPGridRange MergedCells::BlockAt(const CBCGPGridItemID& cell) const {
  const auto found = BlocksMeeting(CBCGPGridRange(cell));
  return found.empty() ? CBCGPGridRange() : found.front();
}

std::vector<CBCGPGridRange> MergedCells::BlocksMeeting(const CBCGPGridRange& range) const {
  std::vector<CBCGPGridRange> found;
  if (!range.IsValid()) return found;
  const auto behind =
      std::upper_bound(blocks_.begin(), blocks_.end(), range.m_nBottom,
                       [](int row, const CBCGPGridRange& block) { return row < block.m_nTop; });
  // Upwards from the last block that begins above the range's end.
  for (auto at = static_cast<std::size_t>(std::distance(blocks_.begin(), behind)); at-- > 0;) {
    if (reach_[at] < range.m_nTop) break;
    if (blocks_[at].Meets(range)) found.push_back(blocks_[at]);
  }
  // Callers get them in reading order.
  std::reverse(found.begin(), found.end());
  return found;
}

bool MergedCells::Add(const CBCGPGridRange& block) {
  if (!CanAdd(block)) return false;
  blocks_.insert(std::upper_bound(blocks_.begin(), blocks_.end(), block, StandsBefore), block);
  Index();
  return true;
}

bool MergedCells::RemoveAt(const CBCGPGridItemID& cell) {
  const CBCGPGridRange block = BlockAt(cell);
  if (!block.IsValid()) return false;
  std::erase(blocks_, block);
  Index();
  return true;
}

void MergedCells::Clear() {
  blocks_.clear();
  reach_.clear();
}

void MergedCells::Assign(const std::vector<CBCGPGridRange>& blocks) {
  blocks_ = blocks;
  Index();
}

void MergedCells::InsertRows(int before, int count) {
  MoveBlocks([=](CBCGPGridRange& block) { RowsInserted(block, before, count); });
}

void MergedCells::RemoveRows(int first, int count) {
  MoveBlocks([=](CBCGPGridRange& block) { RowsRemoved(block, first, count); });
}

void MergedCells::InsertColumns(int before, int count) {
  MoveBlocks([=](CBCGPGridRange& block) { ColumnsInserted(block, before, count); });
}

void MergedCells::RemoveColumns(int first, int count) {
  MoveBlocks([=](CBCGPGridRange& block) { ColumnsRemoved(block, first, count); });
}

// Asked before the move: afterwards a torn block could not be put together again.
bool MergedCells::CanMoveColumn(int from, int to) const {
  return std::all_of(blocks_.begin(), blocks_.end(), [=](const CBCGPGridRange& block) {
    if (block.m_nLeft == block.m_nRight || from == to) return true;
    const bool leaves = from >= block.m_nLeft && from <= block.m_nRight;
    return !leaves && SpansAfterMove(ColumnsOf(block), from, to).size() == 1;
  });
}

void MergedCells::MoveColumn(int from, int to) {
  MoveBlocks([=](CBCGPGridRange& block) {
    block = RangeOf(RowsOf(block), SpansAfterMove(ColumnsOf(block), from, to).front());
  });
}

// Whatever moves lines may make blocks smaller or bring them into another order.
template <class Move>
void MergedCells::MoveBlocks(Move move) {
  if (blocks_.empty()) return;
  MoveRanges(blocks_, move);
  std::erase_if(blocks_, [](const CBCGPGridRange& block) { return block.IsSingle(); });
  // Blocks that began in lines which are gone may begin in one line now, in another order.
  std::sort(blocks_.begin(), blocks_.end(), StandsBefore);
  Index();
}

void MergedCells::Index() {
  reach_.clear();
  for (const CBCGPGridRange& block : blocks_)
    reach_.push_back(reach_.empty() ? block.m_nBottom : std::max(reach_.back(), block.m_nBottom));
}

}  // namespace lorv
