#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TEXPRESSCAL/exact_formula.h"
#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/takeoff/input/rules_file.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"

namespace lorv::tool {

// A quantity with its unit: what the bill totals, and a column of the full table.
struct Quantity {
  std::string name;
  std::string unit;
  std::optional<int> says_decimals;  // nothing where its rows leave it blank
  std::optional<Totalling> says_totalling;
  std::size_t rule = 0;  // the first of its name
  bool is_ratio = false;
  int Decimals() const { return says_decimals.value_or(kDecimals); }
  Totalling HowTotalled() const { return says_totalling.value_or(Totalling::kSum); }
  // "name (unit)"
  std::string Title() const { return unit.empty() ? name : name + " (" + unit + ")"; }
};

// The quantities of a rule set in its order, the ratios behind them; rows of one name and unit are one
// quantity.
class Quantities {
 public:
  // Throws BadInput for a ratio that cannot be calculated or names what is no quantity, and for rows of one
  // quantity that are to be totalled in different ways.
  explicit Quantities(const RuleSet& rules);
  const std::vector<Quantity>& List() const { return list_; }
  // Of a rule; -1 for a row that is no quantity of components.
  int Of(std::size_t rule) const { return of_rule_[rule]; }

  // A ratio of totals, which stand in the order of the list; nothing where one of its quantities has none or
  // the ratio is not finite.
  std::optional<double> Ratio(std::size_t quantity, const std::vector<std::optional<double>>& totals) const;
  // What is doubtful about ratios, with their rules: the formulas, and what kept a line from having one so
  // far.
  std::vector<std::pair<std::size_t, Fault>> RatioDoubts() const;

 private:
  struct RatioFormula {
    std::size_t quantity;
    std::vector<std::size_t> needs;
    ExactFormula formula;
  };
  void AddRatio(const RuleSet& rules, const Rule& rule, std::size_t index);
  static void Join(const RuleSet& rules, const Rule& rule, Quantity& quantity);

  std::vector<Quantity> list_;
  std::vector<int> of_rule_;
  mutable std::vector<RatioFormula> ratios_;  // working one leaves its numbers in it
  std::vector<std::pair<std::size_t, Fault>> doubts_;
  mutable std::map<std::size_t, Fault> failed_;  // by rule, the first of each
};

}  // namespace lorv::tool
