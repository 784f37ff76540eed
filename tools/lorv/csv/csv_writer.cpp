#include "tools/lorv/csv/csv_writer.h"

#include <algorithm>
#include <utility>

// Writes rows that every spreadsheet, and the reader of this tool, read back as the cells that they were.
// Quotes stand only where they are needed, so that files can be compared line by line.

namespace lorv::tool {

bool CsvLine::NeedsQuotes(std::string_view cell) const {
  if (cell.empty()) return false;
  // A "#" would make a remark of a rule, blanks would be dropped at reading, and "sep=" at the beginning of a
  // file would name the separator.
  // "sep=" at the beginning of a file would name the separator.
  const bool misread =
      cell.front() == ' ' || cell.back() == ' ' || cell.front() == '#' || cell.substr(0, 4) == "sep=";
  return misread || std::any_of(cell.begin(), cell.end(), [this](char c) {
           // All usual separators, as a reader guesses which of them it is.
           return c == ',' || c == ';' || c == separator_ || c == '"' || c == '\t' || c == '\r' || c == '\n';
         });
}

CsvLine& CsvLine::Add(std::string_view cell) {
  if (begun_) text_ += separator_;
  begun_ = true;
  if (!NeedsQuotes(cell)) {
    text_ += cell;
    return *this;
  }
  text_ += '"';
  for (const char c : cell) {
    if (c == '"') text_ += '"';
    text_ += c;
  }
  text_ += '"';
  return *this;
}

std::string CsvLine::Take() {
  begun_ = false;
  text_ += line_end_;
  return std::exchange(text_, {});
}

}  // namespace lorv::tool
