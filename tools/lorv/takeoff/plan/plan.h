#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/lorv/takeoff/input/components_file.h"
#include "tools/lorv/takeoff/input/rules_file.h"
#include "tools/lorv/takeoff/plan/bound_formula.h"

namespace lorv::tool {

// A number of the components: a column of their file under a name, or a name that only defaults give a value.
struct Dimension {
  std::string name;
  std::optional<std::size_t> column;
  double factor = 1;
};

// A quantity or step as it applies to the classes of one plan.
struct BoundRule {
  std::size_t rule;    // in the rule set
  std::size_t result;  // which result of the component it gives: alternatives share one
  BoundFormula formula;
  std::optional<BoundFormula> condition;
};

// What a dimension is where a component has none.
struct BoundDefault {
  std::size_t rule;
  std::size_t dimension;
  BoundFormula formula;
  std::optional<BoundFormula> condition;
};

// The rules of all components whose class fits the same rows of the rules file, bound to the file's columns.
struct Plan {
  std::vector<BoundRule> rules;
  std::vector<BoundDefault> defaults;
  std::size_t results = 0;
};

// Where a rule finds the quantity to compare with.
struct Stored {
  std::size_t column;
  double factor;
};

// What a rule names and the components file does not have.
struct Absence {
  enum What { kColumn, kName, kCompare };
  std::size_t rule;
  std::string name;
  What what;
};

// How rules are to be bound.
struct PlanOptions {
  ValueDigits digits = ValueDigits::kAll;
  bool compares = false;  // quantities that the file stores are looked for
};

// Binds rules to a components file: what names mean, which rules a class has.
class Planner {
 public:
  // Throws BadInput for constants that cannot be calculated. A column that the file does not have has no
  // values, and is named among the absences.
  Planner(const RuleSet& rules, const ComponentsFile& file, PlanOptions options = {});

  // The plan of a class; valid as long as this object.
  Plan& PlanOf(const std::string& class_name);

  const std::vector<Dimension>& Dimensions() const { return dimensions_; }
  const RuleSet& Rules() const { return rules_; }
  const std::vector<Absence>& Absences() const { return absences_; }
  // The formulas of a rule, bound as if a component of its classes had come; for rules that no component
  // needs.
  BoundRule BindAlone(std::size_t index);
  // The plans of the classes that have come so far.
  std::vector<const Plan*> Plans() const;
  // What is doubtful in constants, with their rules.
  const std::vector<std::pair<std::size_t, Fault>>& ConstantDoubts() const { return constant_doubts_; }
  // What a name of all classes stands for, and the names among which the nearest is proposed.
  Symbol NameOf(const CString& key) const { return Find(key, {}); }
  const TDefsetVars& Known() const { return known_; }
  std::optional<Stored> StoredOf(std::size_t rule) const { return stored_[rule]; }

 private:
  using Names = std::map<CString, Symbol>;

  void Declare(std::size_t index);
  void DeclareColumn(std::size_t index);
  Symbol FindFor(std::size_t rule, const CString& key, const Names& results);
  BoundFormula Bound(const CString& formula, const Lookup& lookup);
  void DeclareConstant(std::size_t index);
  void DeclareSpecialTexts(const ComponentsFile& file);
  std::size_t DimensionNamed(const std::string& name, std::optional<std::size_t> column, double factor);
  std::optional<Stored> FindStored(std::size_t index);
  std::unique_ptr<Plan> MakePlan(const std::vector<bool>& fits);
  void BindQuantity(std::size_t index, Plan& plan, Names& results);
  void BindDefault(std::size_t index, Plan& plan);
  Symbol Find(const CString& key, const Names& results) const;
  [[noreturn]] void Fail(const Rule& rule, const std::string& message) const;

  const RuleSet& rules_;
  const ComponentsFile& file_;
  PlanOptions options_;
  std::vector<Absence> absences_;
  Names names_;                    // for all classes
  TDefsetVars known_;              // the same, to propose one for a slip of the pen
  bool names_the_circle_ = false;  // a column or a rule is called PI
  std::vector<std::pair<std::size_t, Fault>> constant_doubts_;
  std::vector<Dimension> dimensions_;
  std::vector<std::optional<Stored>> stored_;
  std::map<std::string, Plan*> by_class_;
  std::map<std::vector<bool>, std::unique_ptr<Plan>> plans_;
};

}  // namespace lorv::tool
