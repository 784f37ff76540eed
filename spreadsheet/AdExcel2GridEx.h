#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "containers/sort_array.h"
#include "framework/collections/list.h"
#include "framework/collections/string_array.h"
#include "gridcore/cell_range.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/connection/connect_spreadsheet.h"
#include "spreadsheet/exchange_grid.h"
#include "tables/xarray_db.h"

namespace lorv {

struct SheetArea;
struct UnreadSheet;

// Columns in ascending order, each once.
using ColumnList = TSortArray<int, SortCompare<int, int, __int64>, OxArray<int, OxVector<int>>>;

}  // namespace lorv

// One exchange of a table with a spreadsheet program: filled and sent by ToExcel, or received by FromExcel,
// LoadExcel or LoadExcel2 and read.
//
// Units: rows and columns of the table count from 0. Merged ranges are sheet addresses from 0 on the way out;
//   on the way in rows are those of the table and columns those of the sheet, counted from 1, and an area of
//   k cells is listed k times.
// A table that goes out may hold any value; one that comes in holds texts only, as the sheet shows them.
// Result: the exchange reports failures to the user by messages and raises nothing, except where an operation
//   says otherwise. What was written or read before a failure stays.
// The object lives on the stack of one operation, on the user-interface thread, which has started COM on
// Windows. Which program answers: spreadsheet/connection/spreadsheet_system.h.
//
//   CAdExcel2GridEx out;  out.SetArray(table);  out.ToExcel();
class COMM_LORV_API CAdExcel2GridEx {
 public:
  // `adjust` is added to the columns that are written: a negative one leaves trailing columns out.
  explicit CAdExcel2GridEx(int adjust = 0) : m_nColAdjust(adjust) {}
  CAdExcel2GridEx(const CAdExcel2GridEx&) = default;
  CAdExcel2GridEx& operator=(const CAdExcel2GridEx&) = default;
  virtual ~CAdExcel2GridEx() = default;

  // ---- Filling and reading ----

  // Both give the object's own table, valid as long as the object and always the table of its last operation.
  // After LoadExcel2 by the engine the first call makes it, and raises CMemoryException or std::bad_alloc
  // where memory lacks; until then the workbook stays in memory.
  const CXArrayDBToArray& GetArray() const { return HandedOut(); }
  CXArrayDBToArray& GetArrayForWrite() { return HandedOut(); }
  void SetArray(const CXArrayDBToArray& array);
  // All rows and columns of a grid; its hidden columns are added to those that the sheet hides. The grid
  // shows the same rows afterwards, and its current row is behind the last one, as 16 bits hold it.
  void SetArray(lorv::ExchangeGrid& grid);
  // Titles become the first row of the sheet.
  void SetColTitle(const CStringArray& titles) { m_colTitles = titles; }
  // The names of all columns, hidden ones too.
  void SetColTitle(lorv::ExchangeGrid& grid);
  void SetHorizontaliAlign(int alignment) { m_nHorizontalAlign = alignment; }
  int GetHorizontaliAlign() const { return m_nHorizontalAlign; }

  // Appends a merged range unless it is a single cell or reversed. The count of ranges.
  __int64 AddRange(long first_row, long first_column, long last_row, long last_column);
  void SetRangeData(const CList<CBCGPGridRange>& ranges);
  void DelRangeData() { m_ranges.RemoveAll(); }
  const CList<CBCGPGridRange>& GetRanges() const { return m_ranges; }
  // Merges the ranges in a grid, which paints once afterwards.
  void MergeCell(lorv::ExchangeGrid& grid);
  const lorv::ColumnList& GetColInvisibleArr() const { return m_colInvisible; }
  // 1 if there is a column to hide, else 0.
  int SetInVisibleCols(const lorv::ColumnList& columns);

  // ---- To a sheet ----

  // Writes the table into the sheet of a name, else of an index from 1, else a new one; saves it to the file
  // and closes it, if both are wanted and named; shows the program, or ends it when it was only to save.
  // False where no program was reached, the user cancelled, or a failure was reported. `save`, `show`: see
  // above; `open_existing` writes into the workbook that stands at the file's name with ".xls" behind it.
  bool ToExcel(const CString& file, bool save, bool show, int alignment, int sheet_index, bool open_existing,
               const CString& sheet_name, int row_offset, int column_offset);
  // To a new workbook that stays open on the screen.
  bool ToExcel();

  // ---- From a sheet ----

  // Reads what the user marked in the open workbook, or all that is used where less than two rows are marked.
  // False where no program was reached or a failure was reported; a refused area gives true and an old table.
  bool FromExcel();
  // Asks for a file, then LoadExcel2.
  int LoadExcel(std::vector<CXArrayDBToArray>& tables, CStringArray& names, int sheet_index);
  // Appends a table and its sheet's name for the sheet of an index from 1, or for all sheets with index 0.
  // 1 when read, else 0. What is no framework exception goes to the caller.
  int LoadExcel2(const CString& file, std::vector<CXArrayDBToArray>& tables, CStringArray& names,
                 int sheet_index);

 protected:
  // The number format for a count of decimals; a subclass may have others.
  virtual CString GetFormatOfNumber(int decimals);

  CString RowCol2XlsCell(const int& row, const int& column) const;
  int IsNumeric(LPCTSTR text, __int64& decimals) const;
  void ftoa(double value, int decimals, CString& out) const;
  // A text as a sheet takes it: its value and, as the result, its number format.
  CString Str2ExcelValueStyle(const CString& text, COleVariant& value);
  // A sheet's value as a text: spreadsheet/cells/cell_text.h.
  CString ExcelCellValue2Str(const COleVariant& value, CString& format) const;

  bool WriteWorkbook(const lorv::AutomationFamily& family, const lorv::AutoRef& workbook, const CString& file,
                     bool save, int sheet_index, const CString& sheet_name, int row_offset,
                     int column_offset);
  bool WriteCells(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet, int row_offset,
                  int column_offset);
  bool WriteMergedRanges(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet);
  bool HideColumns(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet);
  bool WriteCell(const lorv::AutomationFamily& family, const CString& text, int row, int column,
                 const lorv::AutoRef& cells, bool set_font_size);

  int ReadWorkbookFile(const lorv::AutomationFamily& family, const lorv::AutoRef& workbook,
                       const CString& file, std::vector<CXArrayDBToArray>& tables, CStringArray& names,
                       int sheet_index);
  bool ReadActiveSheet(const lorv::AutomationFamily& family, const lorv::AutoRef& workbook);
  int ReadSheet(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet, bool use_used_range);
  int ReadCell(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet, int table_row,
               int table_column, int sheet_row, int sheet_column);

 private:
  bool Export(const CString& file, bool save, bool show, int sheet_index, bool open_existing,
              const CString& sheet_name, int row_offset, int column_offset);
  int SheetToWrite(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheets,
                   const CString& sheet_name, int sheet_index) const;
  void SaveAndClose(const lorv::AutomationFamily& family, const lorv::AutoRef& workbook, const CString& file);
  void EmptyBehindFirst(const lorv::AutomationFamily& family, const lorv::AutoRef& cells,
                        const CBCGPGridRange& range);
  CString TextToWrite(int row, int column, bool title_row) const;
  bool Import();
  void TakeSheet(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet,
                 std::vector<CXArrayDBToArray>& tables, CStringArray& names);
  void ReadAllSheets(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheets, long count,
                     std::vector<CXArrayDBToArray>& tables, CStringArray& names);
  std::optional<lorv::SheetArea> AreaToRead(const lorv::AutomationFamily& family,
                                            const lorv::AutoRef& worksheet, bool use_used_range,
                                            lorv::AutoRef& range) const;
  // ReadSheet, with the area that was read without calls.
  int ReadSheetShown(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet,
                     bool use_used_range, std::optional<lorv::SheetArea>& shown);
  // True where it was read without calls.
  bool ReadArea(const lorv::AutomationFamily& family, const lorv::AutoRef& worksheet,
                const lorv::SheetArea& area);
  bool ReadShown(const lorv::AutoRef& worksheet, const lorv::SheetArea& area);
  CXArrayDBToArray GiveAway(const lorv::AutoRef& worksheet, const lorv::SheetArea& area);
  // For this object's own use, during one operation.
  CXArrayDBToArray& Table() const {
    if (m_unread) ReadAgain();
    return m_array;
  }
  CXArrayDBToArray& HandedOut() const {
    m_is_handed_out = true;
    return Table();
  }
  void ReadAgain() const;
  void AddMergedArea(const lorv::SheetArea& area, int table_row, int sheet_row);
  void NoteMergedArea(const lorv::AutomationFamily& family, const lorv::AutoRef& cell, int table_row,
                      int sheet_row);

  int m_nColAdjust;
  // Void while m_unread says from which sheet it is to be made. That is never so once a caller may hold a
  // reference to it, who would see it void.
  mutable CXArrayDBToArray m_array;
  mutable std::shared_ptr<const lorv::UnreadSheet> m_unread;
  mutable bool m_is_handed_out = false;
  CStringArray m_colTitles;
  int m_nFontSize = 10;
  CList<CBCGPGridRange> m_ranges{10};
  lorv::ColumnList m_colInvisible;
  int m_nHorizontalAlign = 1;
};
