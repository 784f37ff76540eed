#pragma once

#include <string>

#include "spreadsheet/servers/engine/book.h"

namespace lorv::engine {

// A workbook as the bytes of an .xlsx file. Raises the engine's failure where the format has no room for it.
std::string XlsxBytes(const Book& book);

}  // namespace lorv::engine
