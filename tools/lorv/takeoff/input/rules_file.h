#pragma once

#include <string>
#include <vector>

#include "framework/text/cstring.h"
#include "tools/lorv/csv/csv_reader.h"
#include "tools/lorv/takeoff/input/class_selector.h"

namespace lorv::tool {

enum class RuleKind {
  kQuantity,  // evaluated for every component of its classes, shown and added up
  kStep,      // evaluated like a quantity for the rows below, neither shown nor added up
  kConstant,  // a number by name, for all classes
  kDefault,   // what a dimension is where a component has none
  kColumn,    // a short name, and a factor, for a column of the components file
  kText,      // the same for a column of words
  kRatio,     // calculated of the totals of quantities, for every line of the bill
};

// What the bill shows of a quantity of many components.
enum class Totalling { kSum, kAverage, kLeast, kMost };

// What happens where a formula meets a name without a value.
enum class Missing { kReport, kSkip, kUseNumber };

// One row of a rules file.
struct Rule {
  RuleKind kind = RuleKind::kQuantity;
  FilePlace place;          // of the row
  FilePlace formula_place;  // of the cell
  FilePlace condition_place;
  FilePlace total_place;
  ClassSelector classes;
  std::string name;
  std::string unit;
  CString formula;  // of a column or text: the header in the components file
  CString condition;
  Missing missing = Missing::kReport;
  double missing_value = 0;
  // Nothing where the row leaves it blank: another row of the quantity may say it.
  std::optional<int> decimals;
  std::optional<Totalling> totalling;
  double factor = 1;
  std::string compare;  // the column of the components file that stores the same quantity
  std::string group;    // rules of one group count once in a comparison
};

struct RuleSet {
  std::string file;
  std::vector<Rule> rules;
};

// Reads a rules file; docs/formats/rules.md is its manual. Throws BadInput, with file, line and character,
// for what is no rules file. Formulas are not looked into: a wrong one must not stop the others.
RuleSet ReadRules(InputBytes& bytes, Encoding encoding);

}  // namespace lorv::tool
