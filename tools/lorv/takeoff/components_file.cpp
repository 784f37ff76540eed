#include "tools/lorv/takeoff/components_file.h"

#include "tools/lorv/takeoff/class_selector.h"
#include "tools/lorv/takeoff/rules_file.h"
#include "tools/lorv/takeoff/takeoff_limits.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {

ComponentsFile::ComponentsFile(InputBytes& bytes, Encoding encoding) : reader_(bytes, encoding, false) {
  if (!reader_.Next(row_)) throw BadInput(reader_.Name() + ": the file is empty");
  ReadHeader();
}

void ComponentsFile::Fail(std::size_t cell, const std::string& message) const {
  throw BadInput(PlaceText(reader_.Name(), row_.Place(cell)) + message);
}

void ComponentsFile::ReadHeader() {
  for (std::size_t cell = 0; cell < row_.Size(); ++cell) {
    const std::string title(row_[cell]);
    titles_.push_back(title);
    if (title.empty()) continue;
    if (!by_title_.emplace(Folded(title), cell).second) {
      Fail(cell, "the column \"" + title + "\" stands here a second time");
    }
    const int role = RoleOf(ComponentColumns(), title);
    if (role >= 0 && !roles_[static_cast<std::size_t>(role)]) roles_[static_cast<std::size_t>(role)] = cell;
  }
  if (!roles_[kClassOf]) {
    Fail(0, "the header has no column " + NamesForUser(ComponentColumns().subspan(kClassOf, 1)) +
                ": it tells which rules are for a component");
  }
}

bool ComponentsFile::Next() {
  if (!reader_.Next(row_)) return false;
  for (std::size_t cell = titles_.size(); cell < row_.Size(); ++cell) {
    if (!row_[cell].empty()) {
      Fail(cell, "more cells than the header has; a cell with a comma in it stands in quotes");
    }
  }
  return true;
}

std::string_view ComponentsFile::Of(ComponentRole role) const {
  return roles_[role] ? row_[*roles_[role]] : std::string_view();
}

double ComponentsFile::Count() const {
  const std::string_view cell = Of(kCountOf);
  if (cell.empty()) return 1;
  const std::optional<double> count = WholeNumber(cell);
  if (!count || *count < 0 || *count > kLargestDimension) {
    Fail(*roles_[kCountOf], "the count \"" + std::string(cell) + "\" is no number from 0 up");
  }
  return *count;
}

std::optional<std::size_t> ComponentsFile::Column(std::string_view title) const {
  const auto found = by_title_.find(Folded(title));
  if (found == by_title_.end()) return std::nullopt;
  return found->second;
}

}  // namespace lorv::tool
