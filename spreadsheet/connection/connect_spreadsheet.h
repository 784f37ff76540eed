#pragma once

#include "framework/text/cstring.h"
#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/automation/automation_table.h"

// How the exchange gets hold of a workbook.
namespace lorv {

enum ConnectResult : int {
  CONNECT_NONE = 0,       // no spreadsheet program reached
  CONNECT_CANCELLED = 1,  // the user refused the choice of workbook
  CONNECT_EXCEL = 2,
  CONNECT_ET = 3,
};

constexpr ConnectResult ResultOf(Program program) {
  return program == Program::kExcel ? CONNECT_EXCEL : CONNECT_ET;
}

// Of a result that belongs to a program.
constexpr Program ProgramOf(ConnectResult result) {
  return result == CONNECT_EXCEL ? Program::kExcel : Program::kEt;
}

// A search takes this many rounds, each with a wait behind it; one round for an empty name.
constexpr int kSearchRounds = 1000;
constexpr unsigned kSearchWait = 10;  // milliseconds

// Gets a workbook: a new or opened one of a program that is started for it; else, and without `create` at
// once, one among the running objects.
//
// The first program that can be created wins; if creating fails by an exception the second is not tried.
//   Where none can be created, a program is started on an empty file of ours, which is then looked for.
// Result: with CONNECT_EXCEL and CONNECT_ET `workbook` is the workbook, never the application. Nothing is
//   raised before the search.
// Blocks its thread, that of the user interface, for some ten seconds at the least where nothing is found.
//
//   AutoRef book;  ConnectSpreadsheet(book, true, CString(), false)  gives CONNECT_EXCEL
COMM_LORV_API ConnectResult ConnectSpreadsheet(AutoRef& workbook, bool create, const CString& file,
                                               bool open_existing);

// Looks for the workbook of a display name among the running objects: an equal one, letter case aside, or
//   one that contains it, for an object with type information. An empty name is contained in every one.
// Without it: the only workbook found, one that the user chooses among several, or AttachActiveApplication.
COMM_LORV_API ConnectResult FindRunningWorkbook(AutoRef& workbook, const CString& name);

// A new workbook of the program that runs as the active object of its class.
COMM_LORV_API ConnectResult AttachActiveApplication(AutoRef& workbook);

// A workbook of an application: the file with ".xls" behind its name, if that is wanted and exists, else a
// new one. The application lives on when its last user here is gone.
COMM_LORV_API bool PrepareWorkbook(Program program, const AutoRef& application, AutoRef& workbook,
                                   const CString& file, bool open_existing);

}  // namespace lorv
