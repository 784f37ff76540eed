#pragma once

#include <optional>
#include <string>
#include <vector>

#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/servers/com/win32/com_pointer.h"
#include "spreadsheet/servers/engine/engine_system.h"

namespace lorv::test {

// Puts an object of the engine behind the system's own dispatch. With an id the object has type information
// of that id.
com::ComPointer<IDispatch> Dispatched(const AutoRef& target, const std::optional<GUID>& type = std::nullopt);

// The engine as a program that the system can start: its name and class are registered until the end.
class ComProgram {
 public:
  explicit ComProgram(Program family);
  ComProgram(const ComProgram&) = delete;
  ComProgram& operator=(const ComProgram&) = delete;
  ~ComProgram();

  engine::EngineSystem& Engine() { return engine_; }
  Program Family() const { return family_; }

 private:
  Program family_;
  engine::EngineSystem engine_;
  DWORD class_object_ = 0;
};

// An entry of the table of running objects, until its end.
class RunningEntry {
 public:
  RunningEntry(const com::ComPointer<IDispatch>& object, LPCTSTR name);
  RunningEntry(const RunningEntry&) = delete;
  RunningEntry& operator=(const RunningEntry&) = delete;
  ~RunningEntry();

 private:
  com::ComPointer<IRunningObjectTable> table_;
  DWORD entry_ = 0;
};

}  // namespace lorv::test
