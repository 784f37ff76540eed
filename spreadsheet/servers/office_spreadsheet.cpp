#include <cstdlib>

#include "spreadsheet/servers/native_spreadsheet.h"
#include "spreadsheet/servers/office/office_library.h"
#include "spreadsheet/servers/office/office_system.h"

// The office that answers where the environment or a host asks for one.

namespace lorv {
namespace {

// Never destroyed: what an office needs to end well is gone when the process's own variables end.
office::OfficeSystem& System();

std::unique_ptr<office::OfficeBridge> StartUntilExit() {
  auto bridge = office::StartOffice();
  // Registered after the libraries of the office were loaded, so that it runs before they end.
  static const int registered = std::atexit([] { System().EndAll(); });
  static_cast<void>(registered);
  return bridge;
}

office::OfficeSystem& System() {
  static auto& system = *new office::OfficeSystem(Program::kExcel, StartUntilExit);
  return system;
}

}  // namespace

SpreadsheetSystem& OfficeSpreadsheet() {
  return System();
}

}  // namespace lorv
