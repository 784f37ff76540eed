#include "spreadsheet/servers/com/win32/com_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"

// On Windows the user's own spreadsheet programs answer, reached by COM. They are one system for the whole
// process; it holds no objects between exchanges.

namespace lorv {

SpreadsheetSystem& OwnSpreadsheet() {
  static com::ComSystem system;
  return system;
}

}  // namespace lorv
