#pragma once

#include "spreadsheet/connection/spreadsheet_system.h"

namespace lorv::com {

// The spreadsheet programs that are installed on a Windows machine: started by their classes, found in the
// system's table of running objects, and opened by the shell.
//
// Failures are answers (null, nothing, an empty text), as spreadsheet_system.h says of each operation.
// One thread: that of the user interface, which has started COM (CoInitialize).
class ComSystem : public SpreadsheetSystem {
 public:
  AutoRef CreateDispatch(LPCTSTR program_id) override;
  std::optional<GUID> ClassOf(LPCTSTR program_id) override;
  AutoRef ActiveObject(const GUID& class_id) override;
  std::unique_ptr<RunningObjects> EnumRunning() override;
  void NudgeWindow(LPCTSTR window_class, UINT message) override;
  CString ProgramOfFile(const CString& file) override;
  CString ShortPath(const CString& path) override;
  void RunCommand(const CString& command, int show) override;
  CString NewGuid() override;
  void Sleep(unsigned milliseconds) override;
  void Trace(const CString& text) override;
  std::optional<CString> AskForFile(const FileQuestion& question) override;
  void BeginWait() override;
  void EndWait() override;

 private:
  HCURSOR before_ = nullptr;
};

}  // namespace lorv::com
