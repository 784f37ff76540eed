#include "gridcore/geometry/group_lines.h"

#include <algorithm>
#include <iterator>

// Which line of the screen a row or a group stands on. Only groups are kept, in the order of their first
// rows: a table has few of them, and rows between two groups follow each other.

namespace lorv {

int GroupLines::GroupsUpTo(int row) const {
  const auto behind = std::upper_bound(groups_.begin(), groups_.end(), row,
                                       [](int at, const RowGroup& group) { return at < group.first; });
  return static_cast<int>(std::distance(groups_.begin(), behind));
}

GroupLines::Place GroupLines::PlaceOf(int line) const {
  int first = 0;
  int count = Count();
  // How many groups stand on this line or above it: their lines ascend.
  while (count > 0) {
    const int half = count / 2;
    if (LineOfGroup(first + half) <= line) {
      first += half + 1;
      count -= half + 1;
    } else {
      count = half;
    }
  }
  if (first > 0 && LineOfGroup(first - 1) == line) return {true, first - 1};
  return {false, line - first};
}

int GroupLines::GroupOf(int row) const {
  // The last group that begins there or before holds the row, or is within the one that does.
  int group = GroupsUpTo(row) - 1;
  while (group >= 0 && At(group).end <= row) group = At(group).parent;
  return group;
}

bool GroupLines::IsRowHidden(int row) const {
  const int group = GroupOf(row);
  return group >= 0 && (!At(group).expanded || IsGroupHidden(group));
}

bool GroupLines::IsGroupHidden(int group) const {
  for (int outer = At(group).parent; outer >= 0; outer = At(outer).parent)
    if (!At(outer).expanded) return true;
  return false;
}

void GroupLines::RowInserted(int row) {
  for (RowGroup& group : groups_) {
    if (group.end <= row) continue;
    ++group.end;
    if (group.first > row) ++group.first;
  }
}

void GroupLines::RowRemoved(int row) {
  for (RowGroup& group : groups_) {
    if (group.end <= row) continue;
    --group.end;
    if (group.first > row) --group.first;
  }
}

int GroupLines::LastWithoutRows() const {
  int group = Count() - 1;
  while (group >= 0 && At(group).first < At(group).end) --group;
  return group;
}

void GroupLines::Erase(int group) {
  const int parent = At(group).parent;
  groups_.erase(groups_.begin() + group);
  for (RowGroup& other : groups_) {
    if (other.parent == group)
      other.parent = parent;
    else if (other.parent > group)
      --other.parent;
  }
}

}  // namespace lorv
