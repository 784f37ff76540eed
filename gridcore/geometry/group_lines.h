#pragma once

#include <vector>

#include "framework/native/export.h"

namespace lorv {

// Rows that belong together under a line of their own. Groups may be within groups.
struct RowGroup {
  int first = 0;  // its rows, `end` not among them
  int end = 0;
  int level = 0;    // 0 for one that is within none
  int parent = -1;  // the number of the group that it is within; -1: none
  bool expanded = true;
};

// Where the lines of groups stand among the rows of a table: each in front of its first row, an outer one in
// front of an inner one.
//
// Units: rows, groups and lines count from 0. Groups are numbered from above; a line is a row or a group.
// Edges: rows may belong to no group, at the end or between groups.
// Cost: a look-up is a search among the groups, a row that comes or goes a walk over them.
// One thread at a time.
//
//   GroupLines lines;  lines.Set({{0, 2}, {2, 3}});  lines.LineOfRow(2)  gives 4, lines.LineOfGroup(1)  3
class COMM_LORV_API GroupLines {
 public:
  struct Place {
    bool group = false;
    int number = 0;
  };

  bool IsEmpty() const { return groups_.empty(); }
  int Count() const { return static_cast<int>(groups_.size()); }
  const RowGroup& At(int group) const { return groups_[static_cast<std::size_t>(group)]; }
  const std::vector<RowGroup>& All() const { return groups_; }
  void Set(std::vector<RowGroup> groups) { groups_ = std::move(groups); }
  void Clear() { groups_.clear(); }

  int LineOfRow(int row) const { return row + GroupsUpTo(row); }
  int LineOfGroup(int group) const { return At(group).first + group; }
  Place PlaceOf(int line) const;
  // The innermost group of the row; -1: none.
  int GroupOf(int row) const;
  // Within a group that is not expanded.
  bool IsRowHidden(int row) const;
  bool IsGroupHidden(int group) const;
  void Expand(int group, bool on) { groups_[static_cast<std::size_t>(group)].expanded = on; }

  // A row that comes in front of the first of a group, or of any other of its rows, belongs to it.
  void RowInserted(int row);
  // Groups that have no row left stay, until they are erased.
  void RowRemoved(int row);
  int LastWithoutRows() const;  // -1: each has one
  void Erase(int group);

 private:
  int GroupsUpTo(int row) const;

  std::vector<RowGroup> groups_;
};

}  // namespace lorv
