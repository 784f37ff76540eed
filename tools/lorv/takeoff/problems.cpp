#include "tools/lorv/takeoff/problems.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/takeoff/takeoff_limits.h"
#include "tools/lorv/text/display_width.h"

namespace lorv::tool {

void Problems::Add(std::size_t rule, RulePart part, const Fault& fault, const std::string& component) {
  const auto key = std::tuple(rule, part, fault.position, fault.message);
  auto known = known_.find(key);
  if (known == known_.end()) {
    if (list_.size() == kMaxProblems) {
      ++beyond_;
      return;
    }
    known = known_.emplace(key, list_.size()).first;
    list_.push_back({rule, part, fault, 0, component});
  }
  ++list_[known->second].components;
}

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

void Problems::Print(std::ostream& out, int columns) const {
  for (const Problem* problem : InOrder()) {
    const Rule& rule = rules_.rules[problem->rule];
    out << Printable(PlaceText(rules_.file, rule.place)) << Printable(rule.name)
        << (problem->part == RulePart::kCondition ? ", its condition: " : ": ")
        << Printable(problem->fault.message) << "\n"
        << CaretText(FormulaOf(*problem), problem->fault.position, problem->fault.length, columns);
    out << "    not worked for " << problem->components
        << (problem->components == 1 ? " component: " : " components, first ") << Printable(problem->first)
        << "\n";
  }
  if (beyond_ > 0) out << "and " << beyond_ << " more problems of other kinds\n";
}

void Problems::Write(JsonText& json) const {
  json.Key("problems").Open('[');
  for (const Problem* problem : InOrder()) {
    const Rule& rule = rules_.rules[problem->rule];
    json.Open('{');
    json.Key("line").Number(rule.place.line);
    json.Key("name").String(rule.name);
    json.Key("part").String(problem->part == RulePart::kCondition ? "condition" : "formula");
    json.Key("formula").String(FormulaOf(*problem).ToUtf8());
    json.Key("message").String(problem->fault.message);
    json.Key("position").Number(static_cast<long long>(problem->fault.position));
    json.Key("length").Number(static_cast<long long>(problem->fault.length));
    json.Key("components").Number(problem->components);
    json.Key("first").String(problem->first);
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
