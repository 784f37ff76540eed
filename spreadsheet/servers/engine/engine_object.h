#pragma once

#include "spreadsheet/servers/engine/engine_objects.h"

namespace lorv::engine {

// One object of the engine: finds the operation behind a number and has its class do it.
class EngineObject : public AutoObject {
 public:
  EngineObject(ProgramRef program, ObjectKind kind) : program_(std::move(program)), kind_(kind) {}

  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override;
  // The engine's programs live with the list of running ones.
  void KeepAlive() override {}

 protected:
  virtual AutoValue Get(Operation operation, std::span<const AutoValue> args);
  virtual void Put(Operation operation, const AutoValue& value);
  virtual AutoValue Call(Operation operation, std::span<const AutoValue> args);
  const ProgramRef& Owner() const { return program_; }

 private:
  ProgramRef program_;
  ObjectKind kind_;
};

// Where a range lies: shared by all ranges of a sheet that are made from one another.
struct SheetPlace {
  ProgramRef program;
  std::shared_ptr<Book> book;
  std::shared_ptr<Sheet> sheet;
};

// What the Count of a range counts.
enum class RangePart { kCells, kRows, kColumns };

AutoRef WorksheetObject(const std::shared_ptr<const SheetPlace>& place);
AutoRef RangeObject(const std::shared_ptr<const SheetPlace>& place, const Area& area,
                    RangePart part = RangePart::kCells);
// The sheet behind an object that is a worksheet; null for any other.
std::shared_ptr<Sheet> SheetOf(const AutoRef& object);

[[noreturn]] void RaiseNoMember();
// The argument at a place; raises COleException where it is not given.
const AutoValue& Argument(std::span<const AutoValue> args, std::size_t at);
long LongArgument(std::span<const AutoValue> args, std::size_t at);
CString TextArgument(std::span<const AutoValue> args, std::size_t at);

}  // namespace lorv::engine
