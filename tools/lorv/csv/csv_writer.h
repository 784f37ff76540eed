#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

// Puts together one row of a table: commas between the cells, CRLF behind the row, quotes where a cell needs
// them.
//
//   CsvLine line;  line.Add("L, m").Add("2");  line.Take()  gives "\"L, m\",2\r\n"
class CsvLine {
 public:
  CsvLine& Add(std::string_view cell);
  // The row; the line is then empty again.
  std::string Take();

 private:
  std::string text_;
  bool begun_ = false;
};

}  // namespace lorv::tool
