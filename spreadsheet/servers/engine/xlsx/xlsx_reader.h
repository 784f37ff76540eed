#pragma once

#include <memory>

#include "platform/ports/files.h"
#include "spreadsheet/servers/engine/book/book.h"

namespace lorv::engine {

// Reads a workbook from an open .xlsx file: values, shared, inline and rich texts, results of formulas,
// number formats, widths and hidden columns, merged areas, the date system. A chart sheet is
// there by its name, without cells.
//
// Raises the engine's failure for an archive or XML that is damaged, for what is no workbook or has no
//   worksheet, and beyond the limits of engine_limits.h; in time and memory that go with those limits.
std::shared_ptr<Book> ReadXlsx(File& file);

}  // namespace lorv::engine
