#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/lorv/csv/csv_writer.h"
#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/takeoff/output/bill.h"
#include "tools/lorv/takeoff/output/sheet_rows.h"

namespace lorv::tool {

// Whether a path names a workbook: its name ends in ".xlsx", letter case aside. Throws BadInput for the names
// of workbooks of other kinds, which nothing here writes.
bool NamesWorkbook(std::string_view path);

// A table that is written to a file, row by row from its titles on: as CSV, or as a workbook where the path
// names one. How files appear is described at NewFile.
class TableFile {
 public:
  // `mark`: a CSV begins with a byte order mark. "-" is the console's output. The console must live as long.
  TableFile(const std::string& path, bool mark, Console& console);
  TableFile(const TableFile&) = delete;
  TableFile& operator=(const TableFile&) = delete;

  void AddText(std::string_view cell);
  // Digits as the take-off prints them, or nothing.
  void AddNumber(std::string_view cell);
  // Throws BadInput when the disk is full, and for a workbook beyond its limits.
  void EndRow();
  // A workbook begins with the bill; a CSV does without. Of a workbook all is made here, with a progress bar.
  void Commit(const Bill& bill);

 private:
  std::string path_;
  Console& console_;
  OutputFile out_;
  CsvLine line_;
  WorkbookFile book_;
  std::optional<SheetRows> sheet_;
};

// Writes the bill alone, as a workbook; "-" is the console's output.
void WriteBillWorkbook(const Bill& bill, const std::string& path, Console& console);

}  // namespace lorv::tool
