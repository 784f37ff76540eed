#pragma once

#include "spreadsheet/automation/served_object.h"
#include "spreadsheet/servers/engine/areas/range_places.h"
#include "spreadsheet/servers/engine/objects/engine_objects.h"

namespace lorv::engine {

// One object of the engine.
class EngineObject : public ServedObject {
 public:
  EngineObject(ProgramRef program, ObjectKind kind)
      : ServedObject(program->Family(), kind), program_(std::move(program)) {}

 protected:
  AutoRef ApplicationObject() const override { return engine::ApplicationObject(program_); }
  const ProgramRef& Owner() const { return program_; }

 private:
  ProgramRef program_;
};

// Where a range lies: shared by all ranges of a sheet that are made from one another.
struct SheetPlace {
  ProgramRef program;
  std::shared_ptr<Book> book;
  std::shared_ptr<Sheet> sheet;
};

AutoRef WorksheetObject(const std::shared_ptr<const SheetPlace>& place);
AutoRef RangeObject(const std::shared_ptr<const SheetPlace>& place, const Area& area,
                    RangePart part = RangePart::kCells);
// The sheet behind an object that is a worksheet; null for any other.
std::shared_ptr<Sheet> SheetOf(const AutoRef& object);

}  // namespace lorv::engine
