#pragma once

#include "gridcore/geometry/group_lines.h"
#include "gridcore/geometry/line_sizes.h"

namespace lorv {

// The heights of the rows of a table and of the lines of its groups, and where each begins.
//
// Units: pixels. Rows go by their numbers, groups by theirs behind the last row's; so in a table of n rows
//   n + 2 is the group 2. A row or group that is out of sight has the height 0.
// Edges: as LineSizes. Without groups it is that.
// One thread at a time.
//
//   ShownLines lines;  lines.Append(2, 20);  lines.LineAt(20)  gives 1
class COMM_LORV_API ShownLines {
 public:
  int RowCount() const { return sizes_.Count() - groups_.Count(); }
  std::int64_t Total() const { return sizes_.Total(); }
  int SizeOf(int id) const { return sizes_.SizeOf(LineOf(id)); }
  std::int64_t OffsetOf(int id) const { return sizes_.OffsetOf(LineOf(id)); }
  int LineAt(std::int64_t offset) const;
  // What is seen below it; -1: nothing.
  int NextShown(int id) const;
  int PreviousShown(int id) const;

  void Insert(int row, int size);
  // The row goes, and groups that have none left with it: `gone` gets the number of each, the last first.
  template <class Gone>
  void Remove(int row, Gone gone);
  void SetSize(int id, int size) { sizes_.SetSize(LineOf(id), 1, size); }
  void Clear();
  // From the first line on, in their order, once the groups are set.
  void StartOver(std::vector<RowGroup> groups);
  void Append(int count, int size) { sizes_.Insert(sizes_.Count(), count, size); }

  GroupLines& Groups() { return groups_; }
  const GroupLines& Groups() const { return groups_; }

 private:
  int LineOf(int id) const;

  LineSizes sizes_;
  GroupLines groups_;
};

template <class Gone>
void ShownLines::Remove(int row, Gone gone) {
  sizes_.Remove(LineOf(row), 1);
  if (groups_.IsEmpty()) return;
  groups_.RowRemoved(row);
  for (int empty = groups_.LastWithoutRows(); empty >= 0; empty = groups_.LastWithoutRows()) {
    sizes_.Remove(groups_.LineOfGroup(empty), 1);
    groups_.Erase(empty);
    gone(empty);
  }
}

}  // namespace lorv
