#include "tools/lorv/csv/csv_writer.h"

#include <algorithm>
#include <utility>

namespace lorv::tool {
namespace {

bool NeedsQuotes(std::string_view cell) {
  if (cell.empty()) return false;
  const bool blank_end = cell.front() == ' ' || cell.back() == ' ' || cell.front() == '#';
  return blank_end || std::any_of(cell.begin(), cell.end(), [](char c) {
           return c == ',' || c == ';' || c == '"' || c == '\t' || c == '\r' || c == '\n';
         });
}

}  // namespace

CsvLine& CsvLine::Add(std::string_view cell) {
  if (begun_) text_ += ',';
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
  text_ += "\r\n";
  return std::exchange(text_, {});
}

}  // namespace lorv::tool
