#pragma once

#include "spreadsheet/connection/spreadsheet_system.h"

namespace lorv {

// The system that is in force where nobody put another: the one that COMM_LORV_SPREADSHEET in the environment
// names, "engine" or "office", else the system's own.
COMM_LORV_API SpreadsheetSystem& NativeSpreadsheet();

// Workbooks in memory and in files, without any program.
COMM_LORV_API SpreadsheetSystem& EngineSpreadsheet();

// LibreOffice on Linux, by a module that is loaded with the first exchange; on Windows it starts nothing and
// says so.
COMM_LORV_API SpreadsheetSystem& OfficeSpreadsheet();

// The system's own: the programs on Windows, the engine elsewhere. One implementation a system.
SpreadsheetSystem& OwnSpreadsheet();

}  // namespace lorv
