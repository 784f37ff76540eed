#pragma once

#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/automation/automation_table.h"

// Objects of the servers in this library.
namespace lorv {

// One object of a server: finds the operation behind a number and has its class do it. A number that the
// program's object has not, or a form that the operation has not, raises DISP_E_MEMBERNOTFOUND.
class ServedObject : public AutoObject {
 public:
  // `family` is the program whose dispids it answers.
  ServedObject(Program family, ObjectKind kind) : family_(family), kind_(kind) {}

  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override;
  // Programs in this library, or run by it, live with the list of running ones.
  void KeepAlive() override {}

 protected:
  virtual AutoValue Get(Operation operation, std::span<const AutoValue> args);
  virtual void Put(Operation operation, const AutoValue& value);
  virtual AutoValue Call(Operation operation, std::span<const AutoValue> args);
  virtual AutoRef ApplicationObject() const = 0;

 private:
  Program family_;
  ObjectKind kind_;
};

[[noreturn]] void RaiseNoMember();
// The argument at a place; raises COleException where it is not given.
const AutoValue& Argument(std::span<const AutoValue> args, std::size_t at);
// Converted as a program does it; what cannot be raises the system's code for it.
long LongArgument(std::span<const AutoValue> args, std::size_t at);
CString TextArgument(std::span<const AutoValue> args, std::size_t at);
double RealArgument(const AutoValue& value);
bool TruthArgument(const AutoValue& value);

}  // namespace lorv
