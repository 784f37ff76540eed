#pragma once

#include <cstddef>

namespace lorv::tool {

// What a table may hold. A file beyond a limit is refused with its line: it is damaged or no table at all.
constexpr std::size_t kMaxCsvCell = 1 << 20;   // bytes of UTF-8 in one cell
constexpr std::size_t kMaxCsvCells = 16384;    // cells in one row, as many as a spreadsheet has columns
constexpr std::size_t kMaxCsvLine = 16 << 20;  // bytes of the file without a line end

}  // namespace lorv::tool
