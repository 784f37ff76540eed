#pragma once

#include "spreadsheet/automation/served_object.h"
#include "spreadsheet/servers/engine/areas/range_places.h"

// Ranges as the servers of this library answer for them: what programs ask of a range is taken apart here,
// checked and counted, and a server is left with questions about cells, columns and areas of its sheet.
namespace lorv::engine {

// A range of a sheet. Areas count from 0.
class ServedRange : public ServedObject {
 public:
  ServedRange(Program family, const Area& area, RangePart part)
      : ServedObject(family, ObjectKind::kRange), area_(area), part_(part) {}

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> args) final;
  void Put(Operation operation, const AutoValue& value) final;

  // Another range of the same sheet.
  virtual AutoRef RangeOf(const Area& area, RangePart part) const = 0;
  virtual AutoRef FontOf(const Area& area) const = 0;

  virtual _variant_t ValueAt(long row, long column) const = 0;
  virtual CString FormatAt(long row, long column) const = 0;
  // The area that a cell is merged into, or the cell alone.
  virtual Area MergedAreaAt(long row, long column) const = 0;
  // 0 where the column is hidden.
  virtual double WidthOf(long column) const = 0;

  virtual void PutValueAt(long row, long column, const AutoValue& value) = 0;
  virtual void PutFormat(const Area& area, const CString& format) = 0;
  // By the programs' codes; those without effect come as well.
  virtual void PutAlignment(const Area& area, long code) = 0;
  virtual void PutMerged(const Area& area, bool merged) = 0;
  // A width that columns can have; 0 hides them.
  virtual void PutWidth(long first, long last, double width) = 0;

 private:
  _variant_t Merged() const;
  AutoRef Sub(const Area& area) const { return RangeOf(area, RangePart::kCells); }

  Area area_;
  RangePart part_;
};

// The font of a range's cells.
class ServedFont : public ServedObject {
 public:
  ServedFont(Program family, const Area& area) : ServedObject(family, ObjectKind::kFont), area_(area) {}

 protected:
  void Put(Operation operation, const AutoValue& value) final;

  // In points, from 1 to kMaxFontSize.
  virtual void PutSize(const Area& area, double points) = 0;

 private:
  Area area_;
};

}  // namespace lorv::engine
