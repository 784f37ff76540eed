#include "tools/lorv/screen/column_text.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/screen/display_width.h"

// Tables for the terminal: the bill, the comparison, lists. All rows are there before the first is printed,
// since a column is as wide as its widest cell.

namespace lorv::tool {
namespace {

// A cell of a table that came from a file may be as long as it likes; a line of a terminal is not.
constexpr int kWidestCell = 60;
constexpr int kGap = 2;

std::string Cell(const std::vector<std::string>& cells, std::size_t index) {
  return index < cells.size() ? Shortened(Printable(cells[index]), kWidestCell) : std::string();
}

}  // namespace

std::vector<int> TextTable::Widths() const {
  std::vector<int> widths;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    int width = DisplayWidth(columns_[i].title);
    for (const auto& row : rows_) width = std::max(width, DisplayWidth(Cell(row, i)));
    widths.push_back(width);
  }
  return widths;
}

void TextTable::PrintRow(std::ostream& out, const std::vector<std::string>& cells,
                         const std::vector<int>& widths) const {
  std::string line;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (i > 0) line.append(kGap, ' ');
    line += columns_[i].side == Side::kLeft ? PadRight(Cell(cells, i), widths[i])
                                            : PadLeft(Cell(cells, i), widths[i]);
  }
  // Blanks at the end would only be noise where the output is compared or pasted.
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << "\n";
}

void TextTable::Print(std::ostream& out) const {
  const std::vector<int> widths = Widths();
  std::vector<std::string> titles;
  int across = -kGap;
  for (const Column& column : columns_) titles.push_back(column.title);
  for (const int width : widths) across += width + kGap;
  const std::string line(static_cast<std::size_t>(std::max(0, across)), '-');
  PrintRow(out, titles, widths);
  out << line << "\n";
  for (const auto& row : rows_) {
    if (row.empty()) {
      out << line << "\n";
    } else {
      PrintRow(out, row, widths);
    }
  }
}

}  // namespace lorv::tool
