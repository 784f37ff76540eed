#include "spreadsheet/servers/native_spreadsheet.h"

namespace lorv {

SpreadsheetSystem& OwnSpreadsheet() {
  return EngineSpreadsheet();
}

}  // namespace lorv
