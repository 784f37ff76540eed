#pragma once

#include <initializer_list>

#include "framework/text/cstring.h"
#include "spreadsheet/automation/auto_object.h"
#include "spreadsheet/automation/automation_table.h"

namespace lorv {

// The operations of one of the two programs, typed: the only code that knows in what they differ.
//
// Units: rows and columns of sheets count from 1, widths are characters of the standard font.
// Edges: an object that is not there raises COleException (E_POINTER).
// Result: an object may be null where the program has none to give. A number comes back from any
//   numeric type; an answer of another kind raises COleException (DISP_E_TYPEMISMATCH).
// A plain value; the objects belong to their thread.
//
//   AutomationFamily(Program::kEt).PutValue(cell, 1.5)  puts 0xC11006 with 10 and 1.5
class COMM_LORV_API AutomationFamily {
 public:
  explicit AutomationFamily(Program program) : program_(program) {}
  Program GetProgram() const { return program_; }

  // Application
  AutoRef Workbooks(const AutoRef& application) const;
  AutoRef ActiveSheet(const AutoRef& application) const;
  AutoRef Selection(const AutoRef& application) const;
  void PutDisplayAlerts(const AutoRef& application, bool shown) const;
  void PutVisible(const AutoRef& application, bool visible) const;
  void Quit(const AutoRef& application) const;
  // Of any object.
  AutoRef Application(const AutoRef& object) const;

  // Workbooks and workbook
  AutoRef AddWorkbook(const AutoRef& workbooks, const AutoValue& template_file) const;
  AutoRef OpenWorkbook(const AutoRef& workbooks, const CString& file) const;
  AutoRef Worksheets(const AutoRef& workbook) const;
  void PutSaved(const AutoRef& workbook, bool saved) const;
  void CloseWorkbook(const AutoRef& workbook, const CString& file) const;
  // In the format that the old programs read as well.
  void SaveAs(const AutoRef& workbook, const CString& file) const;

  // Worksheets and worksheet
  long SheetCount(const AutoRef& worksheets) const;
  // The index is narrowed to 16 bits.
  AutoRef Sheet(const AutoRef& worksheets, int index) const;
  AutoRef AddSheetAfter(const AutoRef& worksheets, const AutoRef& last) const;
  CString SheetName(const AutoRef& worksheet) const;
  void PutSheetName(const AutoRef& worksheet, const CString& name) const;
  AutoRef Cells(const AutoRef& worksheet) const;
  AutoRef UsedRange(const AutoRef& worksheet) const;

  // Range
  long Count(const AutoRef& range) const;
  AutoRef Item(const AutoRef& range, int row, int column) const;
  AutoRef Range(const AutoRef& range, const CString& first_corner, const CString& last_corner) const;
  long Row(const AutoRef& range) const;
  long Column(const AutoRef& range) const;
  AutoRef Rows(const AutoRef& range) const;
  AutoRef Columns(const AutoRef& range) const;
  AutoRef EntireColumn(const AutoRef& range) const;
  double ColumnWidth(const AutoRef& range) const;
  void PutColumnWidth(const AutoRef& range, long width) const;
  AutoRef Font(const AutoRef& range) const;
  void PutFontSize(const AutoRef& font, long size) const;
  void PutHorizontalAlignment(const AutoRef& range, long alignment) const;
  CString NumberFormat(const AutoRef& range) const;
  void PutNumberFormat(const AutoRef& range, const CString& format) const;
  _variant_t Value(const AutoRef& range) const;
  void PutValue(const AutoRef& range, const _variant_t& value) const;
  bool IsMerged(const AutoRef& range) const;
  void PutMerged(const AutoRef& range, bool merged) const;
  AutoRef MergeArea(const AutoRef& range) const;

 private:
  AutoValue Ask(const AutoRef& object, Operation operation, Form form,
                std::initializer_list<AutoValue> args = {}) const;
  AutoRef ObjectOf(const AutoRef& object, Operation operation) const;
  long LongOf(const AutoRef& object, Operation operation) const;
  CString TextOf(const AutoRef& object, Operation operation) const;
  // A whole number where the first program takes any number and the second one a real one.
  _variant_t Real(long value) const;

  Program program_;
};

}  // namespace lorv
