#include "grid/gestures/column_steps.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

// Steps over columns that pass over the hidden ones. The suite's grids count such steps first and walk
// them then; both are kept, as they differ at the ends of the table.

namespace lorv {
namespace {

int CutToInt(std::int64_t number) {
  return static_cast<int>(
      std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// The next column in the direction that is shown, or where the walk stops for want of one.
int NextShown(const ColumnView& columns, int column, int direction) {
  column += direction;
  while (columns.Has(column) && !columns.Shows(column) && std::abs(column) < kHiddenWalkLimit)
    column += direction;
  return column;
}

}  // namespace

int HiddenColumns(const ColumnView& columns, int a, int b) {
  if (a < 0 || b < 0) return 0;
  const int last = std::min(std::max(a, b), columns.count - 1);
  int hidden = 0;
  for (int column = std::min(a, b); column <= last; ++column) hidden += columns.Shows(column) ? 0 : 1;
  return hidden;
}

int ShownColumnAt(const ColumnView& columns, int column, int offset) {
  const int direction = offset > 0 ? 1 : -1;
  const std::int64_t plain = std::int64_t{column} + offset;
  const std::int64_t estimate =
      plain + std::int64_t{direction} * HiddenColumns(columns, column, CutToInt(plain));
  if (estimate < 0 || estimate >= columns.count) return -1;
  for (std::int64_t step = std::abs(std::int64_t{offset}); step > 0 && columns.Has(column); --step)
    column = NextShown(columns, column, direction);
  return columns.Has(column) ? column : -1;
}

}  // namespace lorv
