#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/takeoff/input/rules_file.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// Which formula of a rule a problem is about.
enum class RulePart { kFormula, kCondition };

// What went wrong, once a rule and fault, with the count of components.
struct Problem {
  std::size_t rule;
  RulePart part;
  Fault fault;
  long long components = 0;
  std::string first;  // the first of them, for the user
};

// Collects what is wrong with formulas and values, so that a wrong rule is reported once and not a thousand
// times.
class Problems {
 public:
  explicit Problems(const RuleSet& rules) : rules_(rules) {}

  // Beyond kMaxProblems different ones only the count grows. Without a component: a rule that none needed.
  void Add(std::size_t rule, RulePart part, const Fault& fault, const std::string& component);

  bool IsEmpty() const { return list_.empty(); }
  // Whether anything was not evaluated; doubts alone stop nothing.
  bool HasFaults() const { return has_faults_; }
  const std::vector<Problem>& List() const { return list_; }
  // One after the other in the order of the rules, each with its formula and a mark under the place.
  void Print(std::ostream& out, int columns) const;
  void Write(JsonText& json) const;

 private:
  std::vector<const Problem*> InOrder() const;
  const CString& FormulaOf(const Problem& problem) const;
  static void PrintComponents(std::ostream& out, const Problem& problem);

  const RuleSet& rules_;
  std::vector<Problem> list_;
  std::map<std::tuple<std::size_t, RulePart, int, std::string>, std::size_t> known_;
  long long beyond_ = 0;
  bool has_faults_ = false;
};

}  // namespace lorv::tool
