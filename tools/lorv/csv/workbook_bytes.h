#pragma once

#include <string>

#include "spreadsheet/workbook_file.h"
#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// A workbook as the bytes of a file, with a progress bar while they are made: that takes most of the time of
// a saving. Raises as WorkbookFile::Bytes does.
//
//   output.Write(WorkbookBytes(book, console))
std::string WorkbookBytes(const WorkbookFile& book, Console& console);

}  // namespace lorv::tool
