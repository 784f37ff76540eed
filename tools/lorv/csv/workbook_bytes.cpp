#include "tools/lorv/csv/workbook_bytes.h"

#include <optional>

#include "tools/lorv/screen/progress_bar.h"

// Apart from the tables of workbooks, which the desktop reads as well: it has no console.

namespace lorv::tool {

std::string WorkbookBytes(const WorkbookFile& book, Console& console) {
  std::optional<ProgressBar> bar;
  return book.Bytes([&](std::uint64_t cells, std::uint64_t all) {
    // Only here it is known how many cells there are.
    if (!bar) bar.emplace(console, all);
    bar->Show(cells);
    return true;
  });
}

}  // namespace lorv::tool
