#include "spreadsheet/servers/native_spreadsheet.h"

// Without COM there is no program to ask: the engine, which works on files alone, answers.

namespace lorv {

SpreadsheetSystem& OwnSpreadsheet() {
  return EngineSpreadsheet();
}

}  // namespace lorv
