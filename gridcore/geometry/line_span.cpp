#include "gridcore/geometry/line_span.h"

#include <algorithm>
#include <cstdint>
#include <limits>

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
