#include "tools/lorv/takeoff/findings/problems.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/colours.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"

// Collects faults and doubts of formulas, one entry for a fault whatever the number of components that have
// it. A rule set gone wrong meets every component of the model, and its user has to see the one rule and
// not a million lines.

namespace lorv::tool {

void Problems::Add(std::size_t rule, RulePart part, const Fault& fault, const std::string& component) {
  // Even of those that are not kept: the exit code has to show them.
  has_faults_ |= fault.stops;
  const auto key = std::tuple(rule, part, fault.position, fault.message);
  // Place and message together: one formula may fail in several ways, each for components of its own.
  auto known = known_.find(key);
  if (known == known_.end()) {
    if (list_.size() == kMaxProblems) {
      ++beyond_;
      return;
    }
    known = known_.emplace(key, list_.size()).first;
    list_.push_back({rule, part, fault, 0, component});
  }
  if (!component.empty()) ++list_[known->second].components;
}

// As the rules stand in their file, which is what the user repairs from top to bottom.
std::vector<const Problem*> Problems::InOrder() const {
  std::vector<const Problem*> order;
  for (const Problem& problem : list_) order.push_back(&problem);
  std::stable_sort(order.begin(), order.end(),
                   [](const Problem* a, const Problem* b) { return a->rule < b->rule; });
  return order;
}

const CString& Problems::FormulaOf(const Problem& problem) const {
  const Rule& rule = rules_.rules[problem.rule];
  return problem.part == RulePart::kCondition ? rule.condition : rule.formula;
}

void Problems::PrintComponents(std::ostream& out, const Problem& problem) {
  const std::string count = std::to_string(problem.components);
  const std::string first = Printable(problem.first);
  out << "    ";
  if (problem.components == 0) {
    out << Say("no component needed it");
  } else if (problem.fault.stops) {
    out << (problem.components == 1 ? Say("not calculated for 1 component: {}", {first})
                                    : Say("not calculated for {} components, first {}", {count, first}));
  } else {
    out << (problem.components == 1 ? Say("doubtful for 1 component: {}", {first})
                                    : Say("doubtful for {} components, first {}", {count, first}));
  }
  out << "\n";
}

void Problems::Print(std::ostream& out, int columns) const {
  for (const Problem* problem : InOrder()) {
    const Rule& rule = rules_.rules[problem->rule];
    const bool is_condition = problem->part == RulePart::kCondition;
    out << Printable(PlaceText(rules_.file, is_condition ? rule.condition_place : rule.formula_place))
        << (problem->fault.stops ? "" : Say("warning: ")) << Printable(rule.name)
        << (is_condition ? Say(", its condition: ") : ": ")
        << Coloured(problem->fault.stops ? Colour::kError : Colour::kWarning,
                    Printable(problem->fault.message))
        << "\n"
        << ColouredMark(
               CaretText(FormulaOf(*problem), problem->fault.position, problem->fault.length, columns));
    // Constants and ratios are not calculated for components.
    if (rule.kind != RuleKind::kConstant && rule.kind != RuleKind::kRatio) PrintComponents(out, *problem);
  }
  if (beyond_ > 0) out << Say("and {} more problems of other kinds", {std::to_string(beyond_)}) << "\n";
}

void Problems::Write(JsonText& json) const {
  json.Key("problems").Open('[');
  for (const Problem* problem : InOrder()) {
    const Rule& rule = rules_.rules[problem->rule];
    const bool is_condition = problem->part == RulePart::kCondition;
    json.Open('{');
    json.Key("line").Number(rule.place.line);
    json.Key("column").Number((is_condition ? rule.condition_place : rule.formula_place).character);
    json.Key("name").String(rule.name);
    json.Key("part").String(is_condition ? "condition" : "formula");
    json.Key("formula").String(FormulaOf(*problem).ToUtf8());
    json.Key("message").String(problem->fault.message);
    json.Key("severity").String(problem->fault.stops ? "error" : "warning");
    json.Key("position").Number(static_cast<long long>(problem->fault.position));
    json.Key("length").Number(static_cast<long long>(problem->fault.length));
    json.Key("components").Number(problem->components);
    json.Key("first").String(problem->first);
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
