#include "spreadsheet/servers/engine/areas/merge_list.h"

#include <algorithm>

#include "spreadsheet/cells/exchange_limits.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// Merged areas in the order of their corners, none of which meets another one. Files may bring a million of
// them, and each cell that is read asks for its own: so areas are looked up by their tops, and a walk down
// the rows keeps those that cross the row at hand.

namespace lorv::engine {
namespace {

constexpr long kNoRow = -1;

using OpenAreas = std::map<long, Area>;

// Whether an area meets none of the open ones; those that end above it are closed.
bool IsFree(OpenAreas& open, const Area& area) {
  // Those that are still open all cross the top row of this one, side by side: of them the nearest to the
  // left of its right edge decides alone.
  auto met = open.upper_bound(area.right);
  while (met != open.begin()) {
    --met;
    if (met->second.bottom < area.top) {
      met = open.erase(met);
    } else {
      return met->second.right < area.left;
    }
  }
  return true;
}

}  // namespace

Area Union(const Area& a, const Area& b) {
  return {std::min(a.top, b.top), std::min(a.left, b.left), std::max(a.bottom, b.bottom),
          std::max(a.right, b.right)};
}

bool TakeIntoUse(const Area& without_values, bool any, Area& used) {
  const Area wider = any ? Union(used, without_values) : without_values;
  if (wider.Rows() > kMaxReadRows || wider.Columns() > kMaxReadColumns) return any;
  used = wider;
  return true;
}

MergeList::Areas::const_iterator MergeList::FindMeeting(const Area& area) const {
  const auto end = areas_.upper_bound({area.bottom, kMaxColumns});
  // No area reaches further down from its top than the tallest one does.
  for (auto at = areas_.lower_bound({area.top - tallest_ + 1, 0}); at != end; ++at) {
    if (at->second.Meets(area)) return at;
  }
  return areas_.end();
}

void MergeList::Enter(const Area& area) {
  tallest_ = std::max(tallest_, area.Rows());
  areas_.emplace(Corner{area.top, area.left}, area);
}

void MergeList::Add(Area area) {
  // The union may meet areas that neither of the two met, so it is asked again until it stands alone.
  for (auto met = FindMeeting(area); met != areas_.end(); met = FindMeeting(area)) {
    area = Union(area, met->second);
    areas_.erase(met);
  }
  // What crosses the row asked last may be another area by now.
  row_ = kNoRow;
  if (area.Rows() > 1 || area.Columns() > 1) Enter(area);
}

void MergeList::Remove(const Area& area) {
  row_ = kNoRow;
  for (auto met = FindMeeting(area); met != areas_.end(); met = FindMeeting(area)) areas_.erase(met);
}

// From top to bottom, with the areas that are open at the row at hand by their first column: what is asked of
// them takes no longer for many areas than for few.
void MergeList::Assign(std::vector<Area> areas) {
  std::sort(areas.begin(), areas.end(), [](const Area& a, const Area& b) {
    return Corner{a.top, a.left} < Corner{b.top, b.left};
  });
  areas_.clear();
  tallest_ = 0;
  row_ = kNoRow;
  OpenAreas open;
  for (const Area& area : areas) {
    const bool single = area.Rows() == 1 && area.Columns() == 1;
    if (single || !IsFree(open, area)) continue;
    open[area.left] = area;
    Enter(area);
  }
}

void MergeList::GoTo(long row) const {
  // Readers go down; whoever goes up begins anew.
  if (row_ == kNoRow || row < row_) {
    crossing_.clear();
    row_ = kNoRow;
  }
  std::erase_if(crossing_, [&](const auto& each) { return each.second.bottom < row; });
  const auto end = areas_.upper_bound({row, kMaxColumns});
  for (auto at = areas_.lower_bound({row_ + 1, 0}); at != end; ++at) {
    if (at->second.bottom >= row) crossing_.emplace(at->second.left, at->second);
  }
  row_ = row;
}

const Area* MergeList::Find(long row, long column) const {
  if (areas_.empty()) return nullptr;
  if (row != row_) GoTo(row);
  // Areas of one row lie side by side: only the last that begins at or before the column can hold it.
  const auto behind = crossing_.upper_bound(column);
  if (behind == crossing_.begin()) return nullptr;
  const Area& area = std::prev(behind)->second;
  return area.right >= column ? &area : nullptr;
}

}  // namespace lorv::engine
