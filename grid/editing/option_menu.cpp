#include "grid/editing/option_menu.h"

#include <algorithm>

// The shape of a menu for a long list of options: columns, and a further menu where a screen would be too
// narrow for more of them. Numbers only, so that it can be tried with any count.

namespace lorv {

std::vector<OptionEntry> OptionEntries(int count) {
  std::vector<OptionEntry> entries;
  entries.reserve(static_cast<std::size_t>(std::max(count, 0)));
  int columns = 1;
  for (int option = 0; option < count; ++option) {
    OptionEntry entry{option, false, false};
    if ((option + 1) % kOptionsInColumn == 0 && columns % kColumnsInMenu == 0) {
      entry.opens_more = true;
      columns = 1;
    } else if (option % kOptionsInColumn == 0 && option > 0) {
      entry.begins_column = true;
      ++columns;
    }
    entries.push_back(entry);
  }
  return entries;
}

}  // namespace lorv
