#include "spreadsheet/servers/com/win32/com_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"

namespace lorv {

SpreadsheetSystem& OwnSpreadsheet() {
  static com::ComSystem system;
  return system;
}

}  // namespace lorv
