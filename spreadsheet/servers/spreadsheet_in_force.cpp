#include <utility>

#include "report/dialogs/dlg_file_select.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"

namespace lorv {
namespace {

SpreadsheetSystem*& InForce() {
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
