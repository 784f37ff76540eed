#pragma once

#include <string>

#include "tools/lorv/takeoff/input/components_file.h"
#include "tools/lorv/takeoff/plan/bound_formula.h"
#include "tools/lorv/takeoff/plan/plan.h"

namespace lorv::tool {

// Which components a take-off is for, as a formula over their columns: "class=墙 && 厚>0.2".
//
// A name that is no column, constant or text of the rules is a word: 墙 stands for '墙'. A column that is
// compared with a word, or searched by FIND, is one of words. Letter case does not count in words. A
// component passes where the formula is greater than 0; one that lacks a value does not.
class RowFilter : private ValueSource {
 public:
  // Throws BadInput, with a mark under the place, for a formula that cannot be worked.
  RowFilter(const std::string& formula, const Planner& planner, const ComponentsFile& file);

  // Of the component that the file stands at.
  bool Passes();
  // Components that lacked a value.
  long long Undecided() const { return undecided_; }

 private:
  std::optional<double> DimensionOf(std::size_t index) override;
  std::optional<double> ResultOf(std::size_t /*index*/) override { return std::nullopt; }
  CString TextOf(std::size_t column) override;

  CString WithWords(const CString& typed, const Planner& planner) const;
  Symbol SymbolOf(const CString& key) const;

  const Planner& planner_;
  const ComponentsFile& file_;
  CString text_;
  std::unique_ptr<BoundFormula> formula_;
  long long undecided_ = 0;
};

}  // namespace lorv::tool
