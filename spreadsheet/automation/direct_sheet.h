#pragma once

#include <cstdint>

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// A faster way to the cells of sheets that live in this process: no object and three calls for each cell.
namespace lorv {

// What a cell holds, as its Value and NumberFormat would give it.
struct SheetCell {
  VARTYPE kind = VT_EMPTY;   // VT_EMPTY, VT_R8, VT_DATE, VT_BSTR, VT_BOOL or VT_ERROR
  double number = 0;         // of VT_R8 and VT_DATE; of VT_BOOL 1 or 0
  TextView text;             // of VT_BSTR; valid during the call that hands it out
  std::uint32_t format = 0;  // of the number format; DirectSheet::FormatText
};

// Rows and columns of a sheet; they count from 1, as in the programs.
struct SheetArea {
  long row = 1;
  long column = 1;
  long rows = 1;
  long columns = 1;
};

// Receives the cells of an area one by one. It must not change the workbook while it does.
class COMM_LORV_API SheetVisitor {
 public:
  SheetVisitor() = default;
  SheetVisitor(const SheetVisitor&) = delete;
  SheetVisitor& operator=(const SheetVisitor&) = delete;
  virtual ~SheetVisitor() = default;

  // A cell; `row` and `column` are its place in the area, counted from 0.
  virtual void Cell(int row, int column, const SheetCell& cell) = 0;
  // Before a cell that lies in a merged area.
  virtual void Merged(int row, int column, const SheetArea& area) = 0;
};

// Implemented by worksheets, beside AutoObject, that can hand over all cells of an area by one call.
//
// One thread: that of the worksheet.
class COMM_LORV_API DirectSheet {
 public:
  DirectSheet() = default;
  DirectSheet(const DirectSheet&) = delete;
  DirectSheet& operator=(const DirectSheet&) = delete;
  virtual ~DirectSheet() = default;

  // Shows every cell of an area, empty ones too, row by row. False where the area is not within the sheet;
  // nothing is shown then. What the visitor raises goes to the caller.
  virtual bool Visit(const SheetArea& area, SheetVisitor& visitor) const = 0;
  // Valid as long as the workbook.
  virtual const CString& FormatText(std::uint32_t format) const = 0;
};

}  // namespace lorv
