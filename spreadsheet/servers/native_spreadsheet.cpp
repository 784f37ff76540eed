#include "spreadsheet/servers/native_spreadsheet.h"

#include <cstdlib>
#include <string_view>

#include "spreadsheet/servers/engine/objects/engine_system.h"

// Which server answers where nobody has put one in force. The environment decides each time it is asked, so
// that a program that runs with the engine needs no other build and no setting of its own.

namespace lorv {

SpreadsheetSystem& EngineSpreadsheet() {
  static engine::EngineSystem system;
  return system;
}

SpreadsheetSystem& NativeSpreadsheet() {
  const char* const named = std::getenv("COMM_LORV_SPREADSHEET");
  const std::string_view name = named == nullptr ? "" : named;
  if (name == "engine") return EngineSpreadsheet();
  return name == "office" ? OfficeSpreadsheet() : OwnSpreadsheet();
}

}  // namespace lorv
