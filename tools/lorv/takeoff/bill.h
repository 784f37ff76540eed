#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/takeoff/rules_file.h"
#include "tools/lorv/text/column_text.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// A sum that keeps what plain addition loses: the total of a million components does not depend on their
// order by more than its last digit.
class Sum {
 public:
  void Add(double value);
  double Value() const { return sum_ + lost_; }

 private:
  double sum_ = 0;
  double lost_ = 0;
};

// A quantity with its unit: what is added up, and a column of the full table.
struct Quantity {
  std::string name;
  std::string unit;
  int decimals;
  // "name (unit)"
  std::string Title() const { return unit.empty() ? name : name + " (" + unit + ")"; }
};

// The quantities of a rule set in its order; rows of one name and unit are one quantity.
class Quantities {
 public:
  explicit Quantities(const RuleSet& rules);
  const std::vector<Quantity>& List() const { return list_; }
  // Of a rule; -1 for a row that is no quantity.
  int Of(std::size_t rule) const { return of_rule_[rule]; }

 private:
  std::vector<Quantity> list_;
  std::vector<int> of_rule_;
};

// The totals of a take-off by class, storey and quantity. Classes and storeys stand in the order in which
// they came.
class Bill {
 public:
  explicit Bill(const Quantities& quantities) : quantities_(quantities) {}

  // Adds `count` components with `value` each. Throws BadInput beyond kMaxBillLines totals.
  void Add(std::string_view class_name, std::string_view storey, int quantity, double value, double count);

  // For people: a line for each storey, the sum of the storeys, and the sums of the whole building.
  void Print(std::ostream& out) const;
  // For programs: class, quantity, unit, storey, components, total; totals with all their digits.
  void Write(OutputFile& file) const;
  void Write(JsonText& json) const;

 private:
  struct Line {
    std::size_t class_index;
    int quantity;
    std::size_t storey_index;
    double components = 0;
    Sum total;
  };
  struct Key {
    std::size_t class_index;
    int quantity;
    std::size_t storey_index;
    // The check takes the 0 of the comparison for a pointer.
    auto operator<=>(const Key&) const = default;  // NOLINT(modernize-use-nullptr)
  };
  using Lines = std::map<Key, Line>;
  struct Names {
    std::vector<std::string> list;
    std::map<std::string, std::size_t, std::less<>> index;
    std::size_t IndexOf(std::string_view name);
  };

  // One quantity of one class: a row a storey, and one for all of them; gives the first line behind.
  Lines::const_iterator PrintQuantity(Lines::const_iterator at, bool class_begins, TextTable& table) const;
  const Quantity& QuantityOf(const Line& line) const {
    return quantities_.List()[static_cast<std::size_t>(line.quantity)];
  }
  void PrintBuilding(std::ostream& out) const;

  const Quantities& quantities_;
  Names classes_;
  Names storeys_;
  Lines lines_;
};

}  // namespace lorv::tool
