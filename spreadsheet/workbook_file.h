#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/native/export.h"
#include "framework/text/cstring.h"
#include "framework/values/variant.h"

namespace lorv {

namespace engine {
struct Book;
}

// How a cell of a new workbook is shown.
struct CellLook {
  CString format;  // number format, "0.00" for example; empty for the program's own
  bool bold = false;
};

// A workbook as a file, read or made without any spreadsheet program: whole sheets at once, values as they
// are stored and not as a sheet shows them.
//
// Units: sheets, rows and columns count from 0, widths are characters of the standard font.
// Edges: a sheet that there is not is the caller's fault. Rows and columns beyond a sheet's, texts of more
//   than 32767 units, numbers that are none, widths outside 0 to 255 and files that cannot be read raise the
//   engine's failure.
// Failure: COleDispatchException, by pointer, with the reason for the user; who does not pass it on deletes
// it. A copy is the same workbook. One thread at a time.
//
//   WorkbookFile book;  book.AddSheet(_T("清单"));  book.Put(0, 0, 0, _variant_t(1.5));
//   book.RowTexts(0, 0)  gives {"1.5"}
class COMM_LORV_API WorkbookFile {
 public:
  // Without any sheet.
  WorkbookFile();
  // Reads an .xlsx file or a text table, recognised by its contents. Sheets of charts are left out.
  explicit WorkbookFile(const CString& file);

  int SheetCount() const;
  CString SheetName(int sheet) const;
  // Up to the last row that holds a value.
  long RowCount(int sheet) const;
  // The values of a row as texts, up to its last one: numbers with all their digits ("0.1"), dates and times
  // as "2024-03-07" and "2024-03-07 13:30:00", truth values as "TRUE" and "FALSE", errors as they are
  // spelled.
  std::vector<CString> RowTexts(int sheet, long row) const;

  // Adds a sheet in front of the one of a number, or behind all; its number.
  int AddSheet(const CString& name, int before = -1);
  void Put(int sheet, long row, int column, const _variant_t& value, const CellLook& look = {});
  // Rows of a level above 0 can be folded away under the next row of a lower one.
  void SetRowLevel(int sheet, long row, int level);
  // 0 hides the column.
  void SetWidth(int sheet, int column, double width);
  // The first rows stay on the screen.
  void FreezeRows(int sheet, long rows);

  // Called, while the file is made, with the cells in it and all cells; false ends that. It must not change
  // the workbook.
  using Making = std::function<bool(std::uint64_t cells, std::uint64_t all)>;

  // The .xlsx file, whole; empty where `making` ended it.
  std::string Bytes(const Making& making = {}) const;
  // Writes the file, whole or not at all: what stands there stays where `making` ended it, which gives false,
  // and where it cannot be written, which raises the engine's failure.
  bool Save(const CString& file, const Making& making = {}) const;

 private:
  std::shared_ptr<engine::Book> book_;
};

}  // namespace lorv
