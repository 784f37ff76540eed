#include "spreadsheet/connection/connect_spreadsheet.h"

#include "platform/ports/platform.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/connection/caught.h"
#include "spreadsheet/connection/spreadsheet_system.h"

// How the exchange gets its workbook: from a program of its own, else from one that is started on a file of
// ours and found by that name, else from those that the user has open. A program of its own comes first as it
// leaves the user's workbooks alone.

namespace lorv {
namespace {

// Flags of the shell and of the file dialog, as the system counts them.
constexpr ULONG kKeepProcessHandle = 64;
constexpr int kHiddenWindow = 0;
constexpr DWORD kHideReadOnlyFileMustExist = 0x1004;

CString Quoted(const CString& text) {
  return _T("\"") + text + _T("\"");
}

// An application of its own for this exchange, the first program's if it can be had.
ConnectResult ConnectNew(AutoRef& workbook, const CString& file, bool open_existing) {
  for (const Program program : {Program::kExcel, Program::kEt}) {
    const AutoRef application = SpreadsheetInForce().CreateDispatch(ProgramId(program));
    // Only a program that is not there leads to the next one. An exception ends the loop: the second program
    // is no cure for a first one that fails.
    if (!application) continue;
    PrepareWorkbook(program, application, workbook, file, open_existing);
    return ResultOf(program);
  }
  return CONNECT_NONE;
}

// An empty file of our own, so that the workbook can be found by its name. It is never deleted: the program
// may have it open as long as it likes.
CString MakeScratchFile() {
  Files& files = *PortsInForce().files;
  const CString folder = PortsInForce().suite->RootFolder() + _T("Temp\\");
  files.MakeFolder(folder);
  CString guid = SpreadsheetInForce().NewGuid();
  guid.Remove(_T('{'));
  guid.Remove(_T('}'));
  CString path = folder + guid + _T(".csv");
  // A file that cannot be made changes nothing: its name is looked for all the same.
  files.Open(path, FileUse::kCreate);
  return path;
}

bool IsProgramRegistered() {
  SpreadsheetSystem& system = SpreadsheetInForce();
  return system.ClassOf(ProgramId(Program::kEt)).has_value() ||
         system.ClassOf(ProgramId(Program::kExcel)).has_value();
}

void AskForProgram(const CString& csv) {
  PortsInForce().dialogs->ShowMessage({_T("找不到Excel,请选择Excel程序文件路径:"), CString(), kButtonsOk});
  const FileQuestion question = {_T("exe"), _T("EXCEL.exe"), kHideReadOnlyFileMustExist,
                                 _T("Excel (*EXCEL.exe, *et.exe)|*EXCEL.exe; *et.exe||")};
  const auto chosen = SpreadsheetInForce().AskForFile(question);
  // The file goes without quotes here, unlike after an associated program.
  if (chosen) SpreadsheetInForce().RunCommand(Quoted(*chosen) + _T(" ") + csv, kHiddenWindow);
}

void StartProgramOn(const CString& csv) {
  // The shell finds a registered program by itself. Else there is what opens text tables, and at last the
  // user, who may know a program that is not registered.
  if (IsProgramRegistered()) {
    PortsInForce().shell->Start({_T("open"), csv, CString(), kHiddenWindow, kKeepProcessHandle});
    return;
  }
  SpreadsheetSystem& system = SpreadsheetInForce();
  const CString program = system.ProgramOfFile(csv);
  if (program.IsEmpty()) {
    AskForProgram(csv);
  } else {
    // A command is taken apart at blanks: a short path has none, and the file stands in quotes.
    system.RunCommand(system.ShortPath(program) + _T(" ") + Quoted(csv), kHiddenWindow);
  }
}

}  // namespace

ConnectResult ConnectSpreadsheet(AutoRef& workbook, bool create, const CString& file, bool open_existing) {
  // Who reads wants what the user has open; nothing is started for that.
  if (!create) return FindRunningWorkbook(workbook, CString());
  ConnectResult created = CONNECT_NONE;
  // Whatever goes wrong while a program is started is no failure yet: the search is still to come.
  const bool tried = RunsThrough([&] { created = ConnectNew(workbook, file, open_existing); });
  // What an attempt left half done must not pass for the workbook that is found later.
  if (tried && created != CONNECT_NONE) return created;
  workbook.reset();
  CString csv;
  const bool started = RunsThrough([&] {
    csv = MakeScratchFile();
    StartProgramOn(csv);
  });
  return started ? FindRunningWorkbook(workbook, csv) : CONNECT_NONE;
}

bool PrepareWorkbook(Program program, const AutoRef& application, AutoRef& workbook, const CString& file,
                     bool open_existing) {
  const AutomationFamily family(program);
  // Before anything else is asked: the user keeps the program when this exchange is over, even when it fails.
  application->KeepAlive();
  const AutoRef workbooks = family.Workbooks(application);
  const CString path = file + _T(".xls");
  const bool opens = !file.IsEmpty() && open_existing && PortsInForce().files->Exists(path);
  workbook =
      opens ? family.OpenWorkbook(workbooks, path) : family.AddWorkbook(workbooks, AutoValue::Missing());
  return true;
}

ConnectResult AttachActiveApplication(AutoRef& workbook) {
  SpreadsheetSystem& system = SpreadsheetInForce();
  for (const Program program : {Program::kExcel, Program::kEt}) {
    const auto class_id = system.ClassOf(ProgramId(program));
    // A program that is registered and does not run is the end: the other one is not tried.
    if (!class_id) continue;
    const AutoRef application = system.ActiveObject(*class_id);
    if (!application) return CONNECT_NONE;
    if (RunsThrough([&] { PrepareWorkbook(program, application, workbook, CString(), false); })) {
      return ResultOf(program);
    }
    workbook.reset();
    RunsThrough([&] { AutomationFamily(program).Quit(application); });
    return CONNECT_NONE;
  }
  return CONNECT_NONE;
}

}  // namespace lorv
