#pragma once

#include <string>

#include "tools/lorv/csv/csv_reader.h"
#include "tools/lorv/csv/csv_writer.h"

namespace lorv::tool {

// The rows of a table as the bytes of a file of a certain form.
//
// Edges: a form without a line end has CRLF, one of ASCII alone is written in UTF-8. A surrogate without
//   its partner goes out as U+FFFD.
//
//   TableText text({Encoding::kUtf8, false, ';', false, "\n"});  text.Line().Add("a;b").Add("c");
//   text.TakeRow()  gives "\"a;b\";c\n"
class TableText {
 public:
  explicit TableText(const CsvForm& form);

  // What stands in front of the first row: the mark, the line that names the separator.
  std::string Head() const;
  CsvLine& Line() { return line_; }
  // The bytes of the row that was put together.
  std::string TakeRow() { return Encoded(line_.Take()); }
  // False once a character had no code in the form's encoding; it was written as "?".
  bool IsWhole() const { return whole_; }

 private:
  std::string Encoded(const std::string& utf8) const;

  CsvForm form_;
  CsvLine line_;
  mutable bool whole_ = true;
};

}  // namespace lorv::tool
