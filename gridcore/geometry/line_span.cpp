#include "gridcore/geometry/line_span.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

// Spans of rows or columns that come and go. Sums are made in 64 bits and cut at the ends of an int: a host
// may insert any number of lines anywhere.

namespace lorv {
namespace {

int Cut(std::int64_t line) {
  return static_cast<int>(
      std::clamp<std::int64_t>(line, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace

LineSpan SpanAfterInsert(LineSpan span, int before, int count) {
  if (span.IsEmpty() || count <= 0) return span;
  if (before <= span.first) span.first = Cut(std::int64_t{span.first} + count);
  if (before <= span.last) span.last = Cut(std::int64_t{span.last} + count);
  return span;
}

LineSpan SpanAfterRemove(LineSpan span, int first, int count) {
  if (span.IsEmpty() || count <= 0) return span;
  const std::int64_t behind = std::int64_t{first} + count;
  // A line that goes leaves its number to the first one behind the gap.
  const auto moved = [&](std::int64_t line) {
    if (line < first) return line;
    return line < behind ? std::int64_t{first} : line - count;
  };
  return {Cut(moved(span.first)), Cut(moved(std::int64_t{span.last} + 1) - 1)};
}

int LineAfterMove(int line, int from, int to) {
  if (line == from) return to;
  if (line > from && line <= to) return line - 1;
  return line < from && line >= to ? line + 1 : line;
}

std::vector<LineSpan> SpansAfterMove(LineSpan span, int from, int to) {
  if (span.IsEmpty()) return {};
  const LineSpan others = SpanAfterRemove(span, from, 1);
  const bool came_within = others.first < to && to <= others.last;
  const LineSpan moved = SpanAfterInsert(others, to, 1);
  std::vector<LineSpan> pieces;
  if (came_within)
    pieces = {{moved.first, to - 1}, {to + 1, moved.last}};
  else
    pieces = {moved};
  if (from >= span.first && from <= span.last) pieces.push_back({to, to});
  return UnitedSpans(std::move(pieces));
}

std::vector<LineSpan> UnitedSpans(std::vector<LineSpan> spans) {
  std::erase_if(spans, [](const LineSpan& span) { return span.IsEmpty(); });
  std::sort(spans.begin(), spans.end(),
            [](const LineSpan& a, const LineSpan& b) { return a.first < b.first; });
  std::vector<LineSpan> united;
  for (const LineSpan& span : spans) {
    if (united.empty() || span.first > std::int64_t{united.back().last} + 1)
      united.push_back(span);
    else
      united.back().last = std::max(united.back().last, span.last);
  }
  return united;
}

}  // namespace lorv
