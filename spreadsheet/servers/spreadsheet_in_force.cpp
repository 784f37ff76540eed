#include <utility>

#include "report/dialogs/dlg_file_select.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"

// The system in force: a scope's, else the native one. The dialog that chooses among open workbooks is
// here, too, and not beside the interface: so the interface does not depend on dialogs, and a test's
// system brings its own answer.

namespace lorv {
namespace {

SpreadsheetSystem*& InForce() {
  // A function's variable, as scopes may begin while other files' variables are still being made.
  static SpreadsheetSystem* system = nullptr;
  return system;
}

}  // namespace

int SpreadsheetSystem::ChooseName(const CStringArray& names) {
  CDlgFileSelect dialog(names);
  dialog.DoModal();
  return dialog.Selection();
}

SpreadsheetSystem& SpreadsheetInForce() {
  SpreadsheetSystem* const scoped = InForce();
  return scoped == nullptr ? NativeSpreadsheet() : *scoped;
}

ScopedSpreadsheet::ScopedSpreadsheet(SpreadsheetSystem& system)
    : before_(std::exchange(InForce(), &system)) {}

ScopedSpreadsheet::~ScopedSpreadsheet() {
  InForce() = before_;
}

}  // namespace lorv
