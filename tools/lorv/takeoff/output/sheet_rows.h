#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "spreadsheet/workbook_file.h"

namespace lorv::tool {

// Fills a sheet from its first row down, cell by cell. The first row holds the titles: it stays on the
// screen, and columns are as wide as what stands in them.
class SheetRows {
 public:
  // The workbook must live as long as this.
  SheetRows(WorkbookFile& book, int sheet) : book_(book), sheet_(sheet) {}

  void AddText(std::string_view utf8, bool bold = false);
  // A text that is a number becomes one, shown with as many decimals as it has; any other stays a text.
  void AddNumber(std::string_view utf8, bool bold = false);
  // The same with all its digits shown.
  void AddExact(std::string_view utf8);
  // Rows of a level above 0 fold away under the next row of a lower one.
  void EndRow(int level = 0);
  // Once all is in.
  void Finish();

 private:
  void Put(std::string_view utf8, const _variant_t& value, const CellLook& look);

  WorkbookFile& book_;
  int sheet_;
  long row_ = 0;
  int column_ = 0;
  std::vector<int> widths_;
};

}  // namespace lorv::tool
