#pragma once

#include "spreadsheet/automation/served_object.h"
#include "spreadsheet/servers/engine/areas/range_places.h"
#include "spreadsheet/servers/office/office_failure.h"
#include "spreadsheet/servers/office/office_program.h"

namespace lorv::office {

// One object of the office.
class OfficeObject : public ServedObject {
 public:
  OfficeObject(ProgramRef program, ObjectKind kind)
      : ServedObject(program->Family(), kind), program_(std::move(program)) {}

 protected:
  AutoRef ApplicationObject() const override { return office::ApplicationObject(program_); }
  const ProgramRef& Owner() const { return program_; }

 private:
  ProgramRef program_;
};

// Where a range lies: shared by all ranges of a sheet that are made from one another.
struct SheetPlace {
  ProgramRef program;
  BookRef book;
  std::shared_ptr<OfficeSheet> sheet;
  long at = 0;  // in the workbook, when the object was made
};

AutoRef RangeObject(const std::shared_ptr<const SheetPlace>& place, const Area& area,
                    engine::RangePart part = engine::RangePart::kCells);

}  // namespace lorv::office
