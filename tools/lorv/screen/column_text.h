#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace lorv::tool {

// A table for the terminal: columns as wide as their widest cell, numbers to the right, Chinese characters
// counted as the two columns that they take.
class TextTable {
 public:
  enum class Side { kLeft, kRight };
  struct Column {
    std::string title;
    Side side = Side::kLeft;
  };

  explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

  // One cell a column; missing ones are empty.
  void Add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  // A line across, before the next row.
  void AddLine() { rows_.emplace_back(); }
  void Print(std::ostream& out) const;

 private:
  std::vector<int> Widths() const;
  void PrintRow(std::ostream& out, const std::vector<std::string>& cells,
                const std::vector<int>& widths) const;

  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;  // an empty one is a line across
};

}  // namespace lorv::tool
