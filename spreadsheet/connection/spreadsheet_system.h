#pragma once

#include <memory>
#include <optional>

#include "framework/collections/string_array.h"
#include "framework/text/cstring.h"
#include "spreadsheet/automation/auto_object.h"

// How spreadsheet programs are reached: what the exchange asks of a system besides the objects themselves. A
// system is replaced as a whole, for a scope, by tests and by servers of other kinds.
namespace lorv {

// One object of the table of running objects, bound. What fails gives nothing or false, and never an
// exception.
class COMM_LORV_API RunningObject {
 public:
  RunningObject() = default;
  RunningObject(const RunningObject&) = delete;
  RunningObject& operator=(const RunningObject&) = delete;
  virtual ~RunningObject() = default;

  // 0 where the count is not to be had.
  virtual unsigned TypeInfoCount() = 0;
  // Of the type information at a place, in locale 1024.
  virtual std::optional<GUID> TypeId(unsigned index) = 0;
  virtual bool HasInterface(const GUID& id) = 0;
  virtual std::optional<CString> DisplayName() = 0;
  virtual AutoRef Object() = 0;
};

// The walk through the table of running objects.
class COMM_LORV_API RunningObjects {
 public:
  RunningObjects() = default;
  RunningObjects(const RunningObjects&) = delete;
  RunningObjects& operator=(const RunningObjects&) = delete;
  virtual ~RunningObjects() = default;

  // Goes to the next entry; false at the end.
  virtual bool Next() = 0;
  // The entry's object; null where it cannot be bound.
  virtual std::unique_ptr<RunningObject> Bind() = 0;
};

// A question for an existing file.
struct FileQuestion {
  CString default_extension;
  CString default_name;
  DWORD flags = 0;
  CString filter;
};

// All on the user-interface thread.
class COMM_LORV_API SpreadsheetSystem {
 public:
  SpreadsheetSystem() = default;
  SpreadsheetSystem(const SpreadsheetSystem&) = delete;
  SpreadsheetSystem& operator=(const SpreadsheetSystem&) = delete;
  virtual ~SpreadsheetSystem() = default;

  // A new object of an automation class; null where there is no such class or it does not start.
  virtual AutoRef CreateDispatch(LPCTSTR program_id) = 0;
  virtual std::optional<GUID> ClassOf(LPCTSTR program_id) = 0;
  // The class's active object; null without one, or where it does not answer automation.
  virtual AutoRef ActiveObject(const GUID& class_id) = 0;
  // From the table's beginning; null where any step to it fails.
  virtual std::unique_ptr<RunningObjects> EnumRunning() = 0;

  // Sends a message without parameters to the top window of a class, if there is one.
  virtual void NudgeWindow(LPCTSTR window_class, UINT message) = 0;
  // The program that opens a file, by its extension; empty without one. At most 259 units.
  virtual CString ProgramOfFile(const CString& file) = 0;
  virtual CString ShortPath(const CString& path) = 0;
  virtual void RunCommand(const CString& command, int show) = 0;
  // A new GUID in braces.
  virtual CString NewGuid() = 0;
  virtual void Sleep(unsigned milliseconds) = 0;
  virtual void Trace(const CString& text) = 0;

  // Nothing when the user cancels.
  virtual std::optional<CString> AskForFile(const FileQuestion& question) = 0;
  // The place of the name that the user chose, -1 when cancelled: the dialog of report/dlg_file_select.h.
  virtual int ChooseName(const CStringArray& names);
  virtual void BeginWait() = 0;
  virtual void EndWait() = 0;
};

// The pointer that asks the user to wait, for a scope.
class WaitScope {
 public:
  explicit WaitScope(SpreadsheetSystem& system) : system_(system) { system_.BeginWait(); }
  WaitScope(const WaitScope&) = delete;
  WaitScope& operator=(const WaitScope&) = delete;
  ~WaitScope() { system_.EndWait(); }

 private:
  SpreadsheetSystem& system_;
};

// The system in force.
COMM_LORV_API SpreadsheetSystem& SpreadsheetInForce();

// Puts a system in force until its end. Scopes end in the reverse order of their beginning.
class COMM_LORV_API ScopedSpreadsheet {
 public:
  explicit ScopedSpreadsheet(SpreadsheetSystem& system);
  ScopedSpreadsheet(const ScopedSpreadsheet&) = delete;
  ScopedSpreadsheet& operator=(const ScopedSpreadsheet&) = delete;
  ~ScopedSpreadsheet();

 private:
  SpreadsheetSystem* before_;
};

}  // namespace lorv
