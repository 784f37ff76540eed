#pragma once

#include "spreadsheet/connection/spreadsheet_system.h"

namespace lorv {

// The system that is in force where nobody put another: the engine where COMM_LORV_SPREADSHEET in the
// environment is "engine", else the system's own.
COMM_LORV_API SpreadsheetSystem& NativeSpreadsheet();

// Workbooks in memory and in files, without any program.
COMM_LORV_API SpreadsheetSystem& EngineSpreadsheet();

// The system's own: the programs on Windows, the engine elsewhere. One implementation a system.
SpreadsheetSystem& OwnSpreadsheet();

}  // namespace lorv
