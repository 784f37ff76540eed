#include "gridcore/geometry/column_panes.h"

#include <algorithm>

// Two straight lines, one for each part. Which of them a stretch's end follows is decided by the side of the
// edge that the stretch comes from: one that ends with the frozen part is in it.

namespace lorv {

bool ColumnPanes::Stays(int place) const {
  if (only == ColumnPane::kBoth) return AreSplit() && place < frozen;
  return only == ColumnPane::kFrozen;
}

int ColumnPanes::ScreenAt(int place) const {
  return left + place - (Stays(place) ? 0 : scrolled);
}

PixelStretch ColumnPanes::OnScreen(int from, int to) const {
  if (only != ColumnPane::kBoth || !AreSplit()) return {ScreenAt(from), ScreenAt(to)};
  const auto seen = [this](int place) { return std::max(Edge(), left + place - scrolled); };
  return {from < frozen ? left + from : seen(from), to <= frozen ? left + to : seen(to)};
}

int ColumnPanes::PlaceAt(int screen) const {
  const int place = screen - left;
  return place + (Stays(place) ? 0 : scrolled);
}

}  // namespace lorv
