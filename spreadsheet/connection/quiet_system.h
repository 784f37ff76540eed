#pragma once

#include <vector>

#include "spreadsheet/automation/automation_table.h"
#include "spreadsheet/connection/spreadsheet_system.h"

namespace lorv {

// A workbook that a program has open.
struct ListedWorkbook {
  Program family = Program::kExcel;
  CString name;
  AutoRef workbook;
};

// A system whose programs belong to this process: nothing of the desktop is asked, nothing appears by
// waiting, and what is shown is handed to the desktop as a file.
class COMM_LORV_API QuietSystem : public SpreadsheetSystem {
 public:
  std::unique_ptr<RunningObjects> EnumRunning() override;
  void NudgeWindow(LPCTSTR /*window_class*/, UINT /*message*/) override {}
  CString ProgramOfFile(const CString& /*file*/) override { return {}; }
  CString ShortPath(const CString& path) override { return path; }
  void RunCommand(const CString& /*command*/, int /*show*/) override {}
  CString NewGuid() override;
  void Sleep(unsigned /*milliseconds*/) override {}
  void Trace(const CString& /*text*/) override {}
  std::optional<CString> AskForFile(const FileQuestion& question) override;
  void BeginWait() override {}
  void EndWait() override {}

 protected:
  // As they are now: the caller of a walk may close some while it walks.
  virtual std::vector<ListedWorkbook> OpenWorkbooks() = 0;
  // A new name in the suite's "Temp" folder, which is made; the file before may still be open somewhere.
  CString ScratchPath(LPCTSTR extension);
  static void OpenByDesktop(const CString& path);
};

}  // namespace lorv
