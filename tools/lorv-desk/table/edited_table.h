#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "grid/basic/basic_grid.h"
#include "tools/lorv/csv/csv_reader.h"

namespace lorv::tool {

// Cells that a table may have in all; a file beyond it is refused, as memory would not hold it.
constexpr long long kMaxTableCells = 1LL << 25;

// A table of a text file, shown and edited in a grid: the first row names the columns, all others are rows of
// texts.
//
// Rows that are shorter than others get empty cells to type in; what is written has as many cells as were
// read, and more only where something stands in them. A row that was made in the grid has as many as there
// are columns. What is written has the form of what was read: separator, line end, encoding, mark. A file of
// code page 936 that has got a character which that page lacks is written as UTF-8 with a mark. Failure:
// BadInput, with the file's name and the reason, as CsvReader and OutputFile say. A grid whose file could
//   not be read has part of it; a file that could not be written is as it was.
class EditedTable {
 public:
  explicit EditedTable(std::string path) : path_(std::move(path)) {}

  // Called with the bytes read and all bytes every now and then; false ends the reading.
  using Progress = std::function<bool(std::uint64_t done, std::uint64_t size)>;

  // Into a grid without columns and rows; false where `progress` ended it.
  bool Read(CBCGPBasicGridCtrl& grid, const Progress& progress);
  void Write(CBCGPBasicGridCtrl& grid);

  const std::string& Path() const { return path_; }
  const CsvForm& Form() const { return form_; }

 private:
  bool ReadRows(CsvReader& reader, CBCGPBasicGridCtrl& grid, const std::function<bool()>& goes_on);
  bool WriteAs(CBCGPBasicGridCtrl& grid, const CsvForm& form) const;

  std::string path_;
  CsvForm form_;
  int named_columns_ = 0;
};

}  // namespace lorv::tool
