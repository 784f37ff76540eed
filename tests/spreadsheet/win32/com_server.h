#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/servers/com/win32/com_pointer.h"
#include "spreadsheet/servers/engine/objects/engine_system.h"

namespace lorv::test {

// Puts an object of the engine behind the system's own dispatch. With an id the object has type information
// of that id.
com::ComPointer<IDispatch> Dispatched(const AutoRef& target, const std::optional<GUID>& type = std::nullopt);

// What the system knows of a program: its name, its class and, if it is to start it by itself, the command
// for that. Known until the end.
class ProgramKeys {
 public:
  explicit ProgramKeys(Program family, const CString& command = CString());
  ProgramKeys(const ProgramKeys&) = delete;
  ProgramKeys& operator=(const ProgramKeys&) = delete;
  ~ProgramKeys();

 private:
  Program family_;
};

// The engine as a class of which the system makes applications, until the end or until it is revoked.
class ProgramClass {
 public:
  // What stands before each application.
  using Before = std::function<AutoRef(const AutoRef& application)>;

  explicit ProgramClass(Program family, Before before = {});
  ProgramClass(const ProgramClass&) = delete;
  ProgramClass& operator=(const ProgramClass&) = delete;
  ~ProgramClass() { Revoke(); }

  void Revoke();
  engine::EngineSystem& Engine() { return engine_; }
  AutoRef NewApplication();

 private:
  Program family_;
  Before before_;
  engine::EngineSystem engine_;
  DWORD class_object_ = 0;
};

// The engine as a program of this process that the system can start.
class ComProgram {
 public:
  explicit ComProgram(Program family) : keys_(family), class_(family) {}
  engine::EngineSystem& Engine() { return class_.Engine(); }

 private:
  ProgramKeys keys_;
  ProgramClass class_;
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
