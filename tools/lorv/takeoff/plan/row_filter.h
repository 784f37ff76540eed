#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "tools/lorv/takeoff/input/components_file.h"
#include "tools/lorv/takeoff/plan/bound_formula.h"
#include "tools/lorv/takeoff/plan/plan.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// Which components a take-off is for, as a formula over their columns: "class=墙 && 厚>0.2".
//
// A name that is no column, constant or text of the rules is a word: 墙 stands for '墙', and so do "墙" and
// “墙”. A column that is compared with a word, or searched by FIND, is one of words. Letter case does not
// count in words. A component passes where the formula is greater than 0; one that lacks a value does not.
class RowFilter : private ValueSource {
 public:
  // Throws BadInput, with a mark under the place, for a formula that cannot be calculated.
  RowFilter(const std::string& formula, const Planner& planner, const ComponentsFile& file);

  // Of the component that the file stands at.
  bool Passes();
  // No component lacked a value, and nothing in the formula hardly means what it seems to.
  bool IsFine() const { return undecided_ == 0 && doubts_.empty(); }
  void Print(std::ostream& out, int columns) const;
  void Write(JsonText& json) const;

 private:
  std::optional<double> DimensionOf(std::size_t index) override;
  std::optional<double> ResultOf(std::size_t /*index*/) override { return std::nullopt; }
  CString TextOf(std::size_t column) override;

  CString WithWords(const CString& typed, const Planner& planner) const;
  Symbol SymbolOf(const CString& key) const;
  void DoubtWordsAlone();

  const Planner& planner_;
  const ComponentsFile& file_;
  CString text_;
  std::unique_ptr<BoundFormula> formula_;
  std::vector<Fault> doubts_;
  long long undecided_ = 0;  // components that lacked a value
};

}  // namespace lorv::tool
