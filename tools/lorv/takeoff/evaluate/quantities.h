#pragma once

#include <optional>
#include <string>
#include <vector>

#include "TEXPRESSCAL/exact_formula.h"
#include "tools/lorv/takeoff/input/rules_file.h"

namespace lorv::tool {

// A quantity with its unit: what the bill totals, and a column of the full table.
struct Quantity {
  std::string name;
  std::string unit;
  int decimals = 3;
  Totalling totalling = Totalling::kSum;
  std::size_t rule = 0;  // the first of its name
  bool is_ratio = false;
  // "name (unit)"
  std::string Title() const { return unit.empty() ? name : name + " (" + unit + ")"; }
};

// The quantities of a rule set in its order, the ratios behind them; rows of one name and unit are one
// quantity.
class Quantities {
 public:
  // Throws BadInput for a ratio that cannot be worked or names what is no quantity.
  explicit Quantities(const RuleSet& rules);
  const std::vector<Quantity>& List() const { return list_; }
  // Of a rule; -1 for a row that is no quantity of components.
  int Of(std::size_t rule) const { return of_rule_[rule]; }

  // A ratio of totals, which stand in the order of the list; nothing where one of its quantities has none or
  // the ratio is no number.
  std::optional<double> Ratio(std::size_t quantity, const std::vector<std::optional<double>>& totals) const;

 private:
  struct RatioFormula {
    std::size_t quantity;
    std::vector<std::size_t> needs;
    ExactFormula formula;
  };
  void AddRatio(const RuleSet& rules, const Rule& rule, std::size_t index);

  std::vector<Quantity> list_;
  std::vector<int> of_rule_;
  mutable std::vector<RatioFormula> ratios_;  // working one leaves its numbers in it
};

}  // namespace lorv::tool
