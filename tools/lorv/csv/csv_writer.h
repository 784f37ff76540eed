#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace lorv::tool {

// Puts together one row of a table: separators between the cells, a line end behind the row, quotes where a
// cell needs them to be read as it is, with any of the usual separators.
//
//   CsvLine line;  line.Add("L, m").Add("2");  line.Take()  gives "\"L, m\",2\r\n"
class CsvLine {
 public:
  explicit CsvLine(char separator = ',', std::string line_end = "\r\n")
      : separator_(separator), line_end_(std::move(line_end)) {}
  CsvLine& Add(std::string_view cell);
  // The row; the line is then empty again.
  std::string Take();

 private:
  bool NeedsQuotes(std::string_view cell) const;

  char separator_;
  std::string line_end_;
  std::string text_;
  bool begun_ = false;
};

}  // namespace lorv::tool
