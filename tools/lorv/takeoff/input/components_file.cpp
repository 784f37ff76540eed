#include "tools/lorv/takeoff/input/components_file.h"

#include "tools/lorv/command/verb.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/takeoff/input/rules_file.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"
#include "tools/lorv/text/folded_text.h"
#include "tools/lorv/text/typed_number.h"

// Reads the table of components, a block of rows at a time, so that formulas can be calculated for many at
// once and a model of any size fits. Only its header and the shape of its rows are looked at here: what cells
// mean is up to the rules.

namespace lorv::tool {

ComponentsFile::ComponentsFile(InputBytes& bytes, Encoding encoding)
    : reader_(bytes, encoding, false), block_(kBlock) {
  CsvRow header;
  if (!reader_.Next(header)) throw BadInput(reader_.Name() + Say(": the file is empty"));
  ReadHeader(header);
}

void ComponentsFile::Fail(const CsvRow& row, std::size_t cell, const std::string& message) const {
  throw BadInput(PlaceText(reader_.Name(), row.Place(cell)) + message);
}

void ComponentsFile::ReadHeader(const CsvRow& row) {
  for (std::size_t cell = 0; cell < row.Size(); ++cell) {
    const std::string title(row[cell]);
    titles_.push_back(title);
    if (title.empty()) continue;
    // A name that stands for two columns would take either value in a formula.
    if (!by_title_.emplace(Folded(title), cell).second) {
      Fail(row, cell, Say("the column \"{}\" stands here a second time", {title}));
    }
    const int role = RoleOf(ComponentColumns(), title);
    // Of two titles for one role, such as storey and level, the first one in the file has it.
    if (role >= 0 && !roles_[static_cast<std::size_t>(role)]) roles_[static_cast<std::size_t>(role)] = cell;
  }
  if (!roles_[kClassOf]) {
    Fail(row, 0,
         Say("the header has no column {}: it says which rules are for a component",
             {NamesForUser(ComponentColumns().subspan(kClassOf, 1))}));
  }
}

bool ComponentsFile::Next() {
  // A row in a block keeps its memory for the one that takes its place later.
  if (++at_ < size_) return true;
  at_ = size_ = 0;
  while (size_ < kBlock && ReadComponent(block_[size_])) ++size_;
  return size_ != 0;
}

bool ComponentsFile::ReadComponent(CsvRow& row) {
  if (!reader_.Next(row)) return false;
  for (std::size_t cell = titles_.size(); cell < row.Size(); ++cell) {
    // An unquoted comma moved the cells behind it by one: numbers would be used under wrong titles.
    if (!row[cell].empty()) {
      Fail(row, cell, Say("more cells than the header has; a cell with a comma in it stands in quotes"));
    }
  }
  return true;
}

std::string_view ComponentsFile::Of(ComponentRole role, std::size_t index) const {
  return roles_[role] ? block_[index][*roles_[role]] : std::string_view();
}

double ComponentsFile::Count() const {
  const std::string_view cell = Of(kCountOf);
  if (cell.empty()) return 1;
  const std::optional<double> count = WholeNumber(cell);
  // A part of a component is fine, as with a wall shared between sections; fewer than none is a slip.
  if (!count || *count < 0 || *count > kLargestDimension) {
    Fail(Row(), *roles_[kCountOf], Say("the count \"{}\" is no number from 0 up", {cell}));
  }
  return *count;
}

std::optional<std::size_t> ComponentsFile::Column(std::string_view title) const {
  const auto found = by_title_.find(Folded(title));
  if (found == by_title_.end()) return std::nullopt;
  return found->second;
}

std::string PlaceOfComponent(const ComponentsFile& file) {
  std::string text = Say("line {}", {std::to_string(file.Row().Place().line)});
  for (const ComponentRole role : {kClassOf, kNameOf, kStoreyOf}) {
    if (!file.Of(role).empty()) text += ", " + std::string(file.Of(role));
  }
  return text;
}

}  // namespace lorv::tool
