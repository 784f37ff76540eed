#include "gridcore/geometry/line_sizes.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

// Sizes of up to two thousand million lines in blocks: one of equal lines is a count and a size, one of
// different lines holds each size. Where a block begins is summed up when it is asked for, and kept as far
// as nothing changed since: so a change at the end of a long table costs nothing for the lines before it.

namespace lorv {

std::int64_t LineSizes::Block::OffsetAt(int line) const {
  if (sizes.empty()) return std::int64_t{size} * line;
  return std::accumulate(sizes.begin(), sizes.begin() + line, std::int64_t{0});
}

int LineSizes::Block::LineAt(std::int64_t offset) const {
  if (sizes.empty()) return static_cast<int>(offset / size);
  int line = 0;
  while (offset >= sizes[static_cast<std::size_t>(line)]) offset -= sizes[static_cast<std::size_t>(line++)];
  return line;
}

// Two blocks become one if that costs no memory (one size) or keeps the block small. So two neighbours hold
// more lines than one block may, and there are never many blocks.
bool LineSizes::Block::Joins(const Block& next) const {
  if (sizes.empty() && next.sizes.empty() && size == next.size) return true;
  return std::int64_t{count} + next.count <= kMostInBlock;
}

void LineSizes::Block::Join(const Block& next) {
  if (!sizes.empty() || !next.sizes.empty() || size != next.size) {
    if (sizes.empty()) sizes.assign(static_cast<std::size_t>(count), size);
    for (int line = 0; line < next.count; ++line) sizes.push_back(next.SizeAt(line));
  }
  count += next.count;
  total += next.total;
}

// Keeps the lines before `line` and gives the others.
LineSizes::Block LineSizes::Block::CutFrom(int line) {
  Block rest;
  rest.count = count - line;
  rest.size = size;
  if (!sizes.empty()) {
    rest.sizes.assign(sizes.begin() + line, sizes.end());
    sizes.resize(static_cast<std::size_t>(line));
  }
  const std::int64_t kept = OffsetAt(line);
  rest.total = total - kept;
  total = kept;
  count = line;
  return rest;
}

LineSizes::Block LineSizes::Uniform(int count, int size) {
  return {count, size, std::int64_t{count} * size, {}};
}

int LineSizes::SizeOf(int line) const {
  if (line < 0 || line >= count_) return 0;
  const std::size_t block = BlockOf(line);
  return blocks_[block].SizeAt(line - starts_[block].line);
}

std::int64_t LineSizes::OffsetOf(int line) const {
  if (line <= 0) return 0;
  if (line >= count_) return total_;
  const std::size_t block = BlockOf(line);
  return starts_[block].offset + blocks_[block].OffsetAt(line - starts_[block].line);
}

int LineSizes::LineAt(std::int64_t offset) const {
  if (offset < 0 || offset >= total_) return -1;
  Locate(blocks_.size());
  // Of blocks that begin at one offset the last one: those before it hold hidden lines only.
  const auto behind = std::upper_bound(starts_.begin(), starts_.end(), offset,
                                       [](std::int64_t at, const Start& start) { return at < start.offset; });
  const auto block = static_cast<std::size_t>(std::distance(starts_.begin(), behind)) - 1;
  return starts_[block].line + blocks_[block].LineAt(offset - starts_[block].offset);
}

void LineSizes::Insert(int before, int count, int size) {
  count = std::min(count, std::numeric_limits<int>::max() - count_);
  if (count <= 0) return;
  const Block added = Uniform(count, std::max(size, 0));
  // A table that is filled grows by lines of one size at its end.
  if (before >= count_ && !blocks_.empty() && blocks_.back().sizes.empty() &&
      blocks_.back().size == added.size) {
    blocks_.back().count += count;
    blocks_.back().total += added.total;
    count_ += count;
    total_ += added.total;
    return;
  }
  const std::size_t block = CutAt(std::clamp(before, 0, count_));
  blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(block), added);
  count_ += added.count;
  total_ += added.total;
  Changed(block);
  JoinAround(block);
}

void LineSizes::Remove(int first, int count) {
  const int begin = std::clamp(first, 0, count_);
  const auto end = static_cast<int>(std::clamp<std::int64_t>(std::int64_t{first} + count, begin, count_));
  if (begin == end) return;
  const std::size_t from = CutAt(begin);
  const std::size_t to = CutAt(end);
  for (std::size_t block = from; block < to; ++block) total_ -= blocks_[block].total;
  count_ -= end - begin;
  blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(from),
                blocks_.begin() + static_cast<std::ptrdiff_t>(to));
  Changed(from);
  JoinAround(from);
}

void LineSizes::SetSize(int first, int count, int size) {
  const int begin = std::clamp(first, 0, count_);
  const auto end = static_cast<int>(std::clamp<std::int64_t>(std::int64_t{first} + count, begin, count_));
  if (begin == end) return;
  Remove(begin, end - begin);
  Insert(begin, end - begin, size);
}

void LineSizes::Clear() {
  *this = LineSizes();
}

// Brings the starts of the blocks before `block` up to date.
void LineSizes::Locate(std::size_t block) const {
  if (located_ >= block) return;
  starts_.resize(blocks_.size());
  for (; located_ < block; ++located_) {
    Start start;
    if (located_ > 0) {
      start = starts_[located_ - 1];
      start.line += blocks_[located_ - 1].count;
      start.offset += blocks_[located_ - 1].total;
    }
    starts_[located_] = start;
  }
}

// The block that holds the line, which must be there.
std::size_t LineSizes::BlockOf(int line) const {
  Locate(blocks_.size());
  const auto behind = std::upper_bound(starts_.begin(), starts_.end(), line,
                                       [](int at, const Start& start) { return at < start.line; });
  return static_cast<std::size_t>(std::distance(starts_.begin(), behind)) - 1;
}

// Makes a block begin at the line and gives its number.
std::size_t LineSizes::CutAt(int line) {
  if (line >= count_) return blocks_.size();
  const std::size_t block = BlockOf(line);
  const int within = line - starts_[block].line;
  if (within == 0) return block;
  blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(block) + 1, blocks_[block].CutFrom(within));
  Changed(block + 1);
  return block + 1;
}

// Joins the block with the neighbours on both sides where that is worth it.
void LineSizes::JoinAround(std::size_t block) {
  for (std::size_t at = std::min(block + 1, blocks_.size()); at-- > 0 && at + 2 > block;) {
    if (at + 1 >= blocks_.size() || !blocks_[at].Joins(blocks_[at + 1])) continue;
    blocks_[at].Join(blocks_[at + 1]);
    blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(at) + 1);
    Changed(at);
  }
}

void LineSizes::Changed(std::size_t from) const {
  located_ = std::min(located_, from);
  starts_.resize(std::min(starts_.size(), from));
}

}  // namespace lorv
