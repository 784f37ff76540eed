#include "gridcore/selection/selected_ranges.h"

#include <algorithm>
#include <limits>

#include "gridcore/geometry/range_lines.h"

// The selected cells as ranges of which no two overlap. Adding cuts the new range out of the old ones
// first, so that counts are sums and no cell is reported twice.

namespace lorv {
namespace {

// Behind the last line of all there is none: a range that begins there is not valid.
int After(int line) {
  return line == std::numeric_limits<int>::max() ? -1 : line + 1;
}

// What is left of a range without a part of it: the rows above and below whole, the columns beside.
void AppendWithout(const CBCGPGridRange& range, const CBCGPGridRange& part,
                   std::vector<CBCGPGridRange>& target) {
  const CBCGPGridRange pieces[] = {
      {range.m_nLeft, range.m_nTop, range.m_nRight, part.m_nTop - 1},
      {range.m_nLeft, part.m_nTop, part.m_nLeft - 1, part.m_nBottom},
      {After(part.m_nRight), part.m_nTop, range.m_nRight, part.m_nBottom},
      {range.m_nLeft, After(part.m_nBottom), range.m_nRight, range.m_nBottom},
  };
  std::copy_if(std::begin(pieces), std::end(pieces), std::back_inserter(target),
               [](const CBCGPGridRange& piece) { return piece.IsValid(); });
}

}  // namespace

bool SelectedRanges::Holds(const CBCGPGridItemID& cell) const {
  return std::any_of(ranges_.begin(), ranges_.end(),
                     [&](const CBCGPGridRange& range) { return range.IsInRange(cell); });
}

bool SelectedRanges::HoldsAll(const CBCGPGridRange& range) const {
  // As no two ranges overlap, the common parts add up to the whole or something is missing.
  std::int64_t held = 0;
  for (const CBCGPGridRange& own : ranges_) held += own.CutWith(range).CellCount();
  return range.IsValid() && held == range.CellCount();
}

std::int64_t SelectedRanges::CellCount() const {
  std::int64_t count = 0;
  for (const CBCGPGridRange& range : ranges_) count += range.CellCount();
  return count;
}

std::vector<LineSpan> SelectedRanges::Rows() const {
  std::vector<LineSpan> rows;
  for (const CBCGPGridRange& range : ranges_) rows.push_back(RowsOf(range));
  return UnitedSpans(std::move(rows));
}

std::vector<LineSpan> SelectedRanges::Columns() const {
  std::vector<LineSpan> columns;
  for (const CBCGPGridRange& range : ranges_) columns.push_back(ColumnsOf(range));
  return UnitedSpans(std::move(columns));
}

void SelectedRanges::Add(const CBCGPGridRange& range) {
  if (!range.IsValid()) return;
  // No cell is held twice, so that counts are sums; the range of the last press stands last.
  Remove(range);
  ranges_.push_back(range);
}

void SelectedRanges::Remove(const CBCGPGridRange& range) {
  std::vector<CBCGPGridRange> left;
  for (const CBCGPGridRange& own : ranges_) {
    const CBCGPGridRange common = own.CutWith(range);
    if (common.IsValid())
      AppendWithout(own, common, left);
    else
      left.push_back(own);
  }
  ranges_ = std::move(left);
}

void SelectedRanges::InsertRows(int before, int count) {
  MoveRanges(ranges_, [=](CBCGPGridRange& range) { RowsInserted(range, before, count); });
}

void SelectedRanges::RemoveRows(int first, int count) {
  MoveRanges(ranges_, [=](CBCGPGridRange& range) { RowsRemoved(range, first, count); });
}

void SelectedRanges::InsertColumns(int before, int count) {
  MoveRanges(ranges_, [=](CBCGPGridRange& range) { ColumnsInserted(range, before, count); });
}

void SelectedRanges::RemoveColumns(int first, int count) {
  MoveRanges(ranges_, [=](CBCGPGridRange& range) { ColumnsRemoved(range, first, count); });
}

void SelectedRanges::MoveColumn(int from, int to) {
  std::vector<CBCGPGridRange> moved;
  for (const CBCGPGridRange& range : ranges_)
    for (const LineSpan& columns : SpansAfterMove(ColumnsOf(range), from, to))
      moved.push_back(RangeOf(RowsOf(range), columns));
  ranges_ = std::move(moved);
}

}  // namespace lorv
