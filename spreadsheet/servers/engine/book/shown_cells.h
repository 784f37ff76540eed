#pragma once

#include "spreadsheet/automation/direct_sheet.h"
#include "spreadsheet/servers/engine/book/book.h"

namespace lorv::engine {

// DirectSheet::Visit of a sheet of the engine.
bool ShowCells(const Book& book, const Sheet& sheet, const SheetArea& area, SheetVisitor& visitor);

}  // namespace lorv::engine
