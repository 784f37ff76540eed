#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace lorv::engine {

// A rectangle of a sheet; rows and columns count from 0, the last ones are inside.
struct Area {
  long top = 0;
  long left = 0;
  long bottom = 0;
  long right = 0;

  long Rows() const { return bottom - top + 1; }
  long Columns() const { return right - left + 1; }
  bool Contains(long row, long column) const {
    return row >= top && row <= bottom && column >= left && column <= right;
  }
  bool Meets(const Area& other) const {
    return top <= other.bottom && other.top <= bottom && left <= other.right && other.left <= right;
  }
  bool operator==(const Area&) const = default;
};

Area Union(const Area& a, const Area& b);

// Widens the used area of a sheet by one without values, or begins it with that where there is none yet. One
// far out must not make a sheet too large to read: it is left out. Whether there is a used area now.
bool TakeIntoUse(const Area& without_values, bool any, Area& used);

// The merged areas of a sheet; no two of them meet.
class MergeList {
 public:
  using Corner = std::pair<long, long>;  // top, left

  // An area that meets others takes them in. A single cell is none.
  void Add(Area area);
  // The areas of a file in place of all: of those that meet, the one whose corner comes first stays.
  void Assign(std::vector<Area> areas);
  // All that meet the area go.
  void Remove(const Area& area);
  // Null for a cell that is in none. Going down the rows costs no search through all areas.
  const Area* Find(long row, long column) const;
  std::size_t Size() const { return areas_.size(); }
  const std::map<Corner, Area>& All() const { return areas_; }

 private:
  using Areas = std::map<Corner, Area>;

  Areas::const_iterator FindMeeting(const Area& area) const;
  void Enter(const Area& area);
  void GoTo(long row) const;

  Areas areas_;
  long tallest_ = 0;
  // Those that cross the row asked last, by their first column.
  mutable long row_ = -1;
  mutable std::map<long, Area> crossing_;
};

}  // namespace lorv::engine
