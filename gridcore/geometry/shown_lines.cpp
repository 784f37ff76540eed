#include "gridcore/geometry/shown_lines.h"

#include <utility>

// Rows and the lines of groups above them as one column of heights. Without groups it is the plain list of
// sizes and costs nothing more.

namespace lorv {

int ShownLines::LineOf(int id) const {
  if (groups_.IsEmpty()) return id;
  const int rows = RowCount();
  if (id >= rows && id < sizes_.Count()) return groups_.LineOfGroup(id - rows);
  // What stands nowhere stays so: behind the last row is behind the last line.
  return id < 0 || id >= rows ? id : groups_.LineOfRow(id);
}

int ShownLines::LineAt(std::int64_t offset) const {
  const int line = sizes_.LineAt(offset);
  if (line < 0 || groups_.IsEmpty()) return line;
  const GroupLines::Place place = groups_.PlaceOf(line);
  return place.group ? RowCount() + place.number : place.number;
}

int ShownLines::NextShown(int id) const {
  return LineAt(OffsetOf(id) + SizeOf(id));
}

int ShownLines::PreviousShown(int id) const {
  return LineAt(OffsetOf(id) - 1);
}

void ShownLines::Insert(int row, int size) {
  groups_.RowInserted(row);
  sizes_.Insert(groups_.IsEmpty() ? row : groups_.LineOfRow(row), 1, size);
}

void ShownLines::Clear() {
  sizes_.Clear();
  groups_.Clear();
}

void ShownLines::StartOver(std::vector<RowGroup> groups) {
  sizes_.Clear();
  groups_.Set(std::move(groups));
}

}  // namespace lorv
