#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "spreadsheet/servers/engine/book/book.h"

namespace lorv::engine {

// Called, while a workbook is made, with how many of all its cells are; false ends it.
using Making = std::function<bool(std::uint64_t cells, std::uint64_t all)>;

// A workbook as the bytes of an .xlsx file; none where `making` ended it. Raises the engine's failure where
// the format has no room for it.
std::string XlsxBytes(const Book& book, const Making& making = {});

}  // namespace lorv::engine
