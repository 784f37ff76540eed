#include "grid/printing/page_breaks.h"

#include <algorithm>

// Breaks of pages. A break moves up to the edge of the line that it falls into, then out of what stays whole;
// where nothing would be left on the page it falls where the room ends.

namespace lorv {
namespace {

// The break out of all stretches that are not larger than a room; they are in the order of their beginnings.
int OutOf(const std::vector<WholeStretch>& whole, int start, int end, int room) {
  // From the last one up, as a move may lead into one that begins before.
  for (auto at = whole.rbegin(); at != whole.rend(); ++at)
    if (at->first > start && at->first < end && at->end > end && at->end - at->first <= room) end = at->first;
  return end;
}

}  // namespace

std::vector<int> PageBreaks(int total, int room, std::size_t most, const std::function<int(int)>& edge_at,
                            std::vector<WholeStretch> whole) {
  std::vector<int> breaks;
  if (total <= 0 || room <= 0) return breaks;
  std::sort(whole.begin(), whole.end(),
            [](const WholeStretch& a, const WholeStretch& b) { return a.first < b.first; });
  breaks.push_back(0);
  while (breaks.back() < total && breaks.size() <= most) {
    const int start = breaks.back();
    if (total - start <= room) {
      breaks.push_back(total);
      break;
    }
    const int edge = edge_at(start + room);
    // A line that alone is larger than the page.
    const int line_end = edge > start ? edge : start + room;
    breaks.push_back(OutOf(whole, start, line_end, room));
  }
  return breaks;
}

}  // namespace lorv
