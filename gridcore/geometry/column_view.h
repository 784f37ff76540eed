#pragma once

#include <functional>

namespace lorv {

// The columns of a table as rules about columns see them: how many there are and which are shown.
struct ColumnView {
  int count = 0;
  std::function<bool(int)> shows;  // asked for columns from 0 to count - 1 only

  bool Has(int column) const { return column >= 0 && column < count; }
  bool Shows(int column) const { return Has(column) && shows(column); }
};

}  // namespace lorv
