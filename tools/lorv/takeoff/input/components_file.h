#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/lorv/csv/csv_reader.h"
#include "tools/lorv/takeoff/input/column_names.h"

namespace lorv::tool {

// A table of building components, one a row, read once from front to end; docs/formats/components.md is its
// manual. Throws BadInput, with file, line and character, for what is no such table.
class ComponentsFile {
 public:
  // Reads the header.
  ComponentsFile(InputBytes& bytes, Encoding encoding);

  // The next component; false at the end. Components are read a block at a time.
  bool Next();

  const std::string& Name() const { return reader_.Name(); }
  const CsvRow& Row() const { return block_[at_]; }
  // The cell of a known column, empty where the file has no such column.
  std::string_view Of(ComponentRole role) const { return Of(role, at_); }

  // Where the component stands in its block: 0 for the first one.
  std::size_t InBlock() const { return at_; }
  std::size_t BlockSize() const { return size_; }
  const CsvRow& RowInBlock(std::size_t index) const { return block_[index]; }
  std::string_view Of(ComponentRole role, std::size_t index) const;
  // How many components the row stands for: 1 where nothing is said.
  double Count() const;

  const std::vector<std::string>& Titles() const { return titles_; }
  std::optional<std::size_t> Column(ComponentRole role) const { return roles_[role]; }
  // The role of a column, or -1.
  int RoleAt(std::size_t column) const { return RoleOf(ComponentColumns(), titles_[column]); }
  // By title, without letter case.
  std::optional<std::size_t> Column(std::string_view title) const;

 private:
  static constexpr std::size_t kBlock = 4096;

  void ReadHeader(const CsvRow& row);
  bool ReadComponent(CsvRow& row);
  [[noreturn]] void Fail(const CsvRow& row, std::size_t cell, const std::string& message) const;

  CsvReader reader_;
  std::vector<CsvRow> block_;
  std::size_t size_ = 0;
  std::size_t at_ = 0;
  std::vector<std::string> titles_;
  std::map<std::string, std::size_t> by_title_;
  std::array<std::optional<std::size_t>, kComponentRoles> roles_;
};

// Where the component at hand stands and what it is: "line 4, Wall, W1, 1F".
std::string PlaceOfComponent(const ComponentsFile& file);

}  // namespace lorv::tool
