#pragma once

#include <string>
#include <vector>

#include "spreadsheet/automation/automation_table.h"
#include "spreadsheet/connection/spreadsheet_system.h"

// A spreadsheet system that passes everything on to another one and writes it down: each call with its
// arguments and its answer, and each release of an object. For tests, and for finding out what a program
// of a user was asked.
namespace lorv {

// What is written, one line a call: "Range6 put Value(12.5)", "Cells5 get Item(1, 1) -> Range6",
// "release Range6".
struct CallRecord {
  std::vector<std::string> lines;
  // The call of this number, counted from 1, fails with `failure` before it is passed on; 0 fails none.
  int fail_at = 0;
  HRESULT failure = E_FAIL;
  // With a description the failure is the kind that programs describe.
  CString description;

  int calls = 0;    // objects asked so far
  int objects = 0;  // objects handed out so far
  int alive = 0;    // of them, those not released yet
};

// Wraps an object of a program; null stays null.
AutoRef RecordedObject(CallRecord& record, Program program, ObjectKind kind, const AutoRef& target);

// Both the record and the system behind must live as long as this one and its objects.
class RecordingSystem : public SpreadsheetSystem {
 public:
  RecordingSystem(SpreadsheetSystem& target, CallRecord& record) : target_(target), record_(record) {}

  AutoRef CreateDispatch(LPCTSTR program_id) override;
  std::optional<GUID> ClassOf(LPCTSTR program_id) override { return target_.ClassOf(program_id); }
  AutoRef ActiveObject(const GUID& class_id) override;
  std::unique_ptr<RunningObjects> EnumRunning() override;
  void NudgeWindow(LPCTSTR window_class, UINT message) override {
    target_.NudgeWindow(window_class, message);
  }
  CString ProgramOfFile(const CString& file) override { return target_.ProgramOfFile(file); }
  CString ShortPath(const CString& path) override { return target_.ShortPath(path); }
  void RunCommand(const CString& command, int show) override { target_.RunCommand(command, show); }
  CString NewGuid() override { return target_.NewGuid(); }
  void Sleep(unsigned milliseconds) override { target_.Sleep(milliseconds); }
  void Trace(const CString& text) override { target_.Trace(text); }
  std::optional<CString> AskForFile(const FileQuestion& question) override {
    return target_.AskForFile(question);
  }
  int ChooseName(const CStringArray& names) override { return target_.ChooseName(names); }
  void BeginWait() override;
  void EndWait() override;

 private:
  SpreadsheetSystem& target_;
  CallRecord& record_;
};

}  // namespace lorv
