#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/lorv/csv/text_decoder.h"

namespace lorv::tool {

// Where something stands in a text file; lines and characters count from 1.
struct FilePlace {
  long long line = 1;
  long long character = 1;
};

// "FILE, line 12, column 5: "
std::string PlaceText(const std::string& file, FilePlace place);

// A row of a table. A cell outside it is empty.
class CsvRow {
 public:
  std::size_t Size() const { return cells_.size(); }
  std::string_view operator[](std::size_t cell) const;
  // Where the cell begins; of the row for a cell outside it.
  FilePlace Place(std::size_t cell = 0) const;
  bool IsBlank() const;

 private:
  friend class CsvReader;
  struct Cell {
    std::size_t begin;
    std::size_t end;
    FilePlace place;
  };
  void Clear();

  std::string text_;
  std::vector<Cell> cells_;
};

// What a reader makes of blanks around cells and of rows without anything in them: tables of data do without,
// an editor must give back what the file held.
enum class CsvBlanks { kDropped, kKept };

// How a table's file is written, so that it can be written the same way again.
struct CsvForm {
  Encoding encoding = Encoding::kAuto;  // kAuto: all of it is ASCII
  bool has_mark = false;                // begins with a byte order mark
  char separator = ',';
  bool names_separator = false;  // in a first line "sep=;"
  std::string line_end;          // of its first line; empty where none ends
};

// Reads a table from a text file, a row at a time: memory is that of a block and a row, whatever the size.
//
// Form: cells parted by commas, semicolons or tabs (what the first row has most of); rows by LF, CR or
//   CRLF; a cell in quotes may hold separators, line ends and doubled quotes. A quote inside a cell that
//   does not begin with one stands for itself (12" pipe). A first line "sep=;" names the separator.
// Edges: rows of blank cells only are passed over, and with `comments` rows whose first cell begins with "#".
//   Blanks and tabs around a cell without quotes are no part of it. With CsvBlanks::kKept both stay: a line
//   of nothing is a row of one empty cell.
// Failure: throws BadInput with file, line and character for a quote that is never closed, for text behind a
//   closing quote, for a zero character, and beyond the limits of csv_limits.h.
class CsvReader {
 public:
  CsvReader(InputBytes& bytes, Encoding encoding, bool comments, CsvBlanks blanks = CsvBlanks::kDropped);

  // The next row; false at the end.
  bool Next(CsvRow& row);
  const std::string& Name() const { return bytes_.Name(); }
  // As far as it was read: complete behind the last row.
  CsvForm Form() const;

 private:
  bool More();
  char Peek();
  char TakeByte();
  void SkipLineEnd();
  void SkipBlanks(CsvRow& row);
  void ReadRow(CsvRow& row);
  void ReadCell(CsvRow& row);
  void ReadQuoted(CsvRow& row, FilePlace begin);
  void ReadPlain(CsvRow& row);
  bool TakeRun(CsvRow& row);
  void Keep(CsvRow& row, char c);
  void CheckCell(const CsvRow& row) const;
  void FindSeparator();
  bool AtCellEnd();
  [[noreturn]] void Fail(FilePlace place, const std::string& message) const;

  InputBytes& bytes_;
  TextDecoder decoder_;
  bool comments_;
  bool keeps_blanks_;
  std::string block_;
  std::size_t at_ = 0;
  FilePlace place_;
  char separator_ = ',';
  bool names_separator_ = false;
  std::string line_end_;
  bool begun_ = false;
};

}  // namespace lorv::tool
