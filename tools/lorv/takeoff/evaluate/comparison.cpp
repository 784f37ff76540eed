#include "tools/lorv/takeoff/evaluate/comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/column_text.h"
#include "tools/lorv/text/typed_number.h"

// Compares the quantities that were calculated with those that the components file stores already, as models
// exported from CAD do. It says how far a rule set agrees with the model's own numbers, and which components
// do not, for people who write rules.

namespace lorv::tool {
namespace {

// The JSON text names this many, so that a rule set gone wrong over a large model fills neither
// memory nor disk.
constexpr std::size_t kMaxDifferences = 10000;
// What a screen holds beside the bill.
constexpr std::size_t kShownDifferences = 12;

}  // namespace

Comparison::Line& Comparison::LineOf(const std::string& name, bool is_group, std::size_t rule) {
  Line& line = lines_.try_emplace({is_group, name}, Line{name, is_group, rule, 0, 0}).first->second;
  // A class that came first may have met a row further down: lines stand by their first row in the file.
  line.rule = std::min(line.rule, rule);
  return line;
}

double Comparison::Difference::Share() const {
  // A share of nothing: such a component stands above all others.
  if (theirs == 0) return ours == 0 ? 0 : std::numeric_limits<double>::infinity();
  return (ours - theirs) / std::fabs(theirs);
}

void Comparison::Keep(Difference difference) {
  if (differences_.size() < kMaxDifferences) {
    differences_.push_back(std::move(difference));
  } else {
    ++beyond_;
  }
}

void Comparison::Add(const ComponentsFile& file, const std::vector<Result>& results) {
  std::map<std::string, Group> groups;
  for (const Result& result : results) {
    const auto stored = planner_.StoredOf(result.rule);
    if (result.state != Result::kEvaluated || !stored) continue;
    const std::optional<double> number = WholeNumber(file.Row()[stored->column]);
    // The file has no number for this component: there is nothing to agree with.
    if (!number) continue;
    const double theirs = *number * stored->factor;
    const bool agrees = std::fabs(result.value - theirs) <= tolerance_ * std::fabs(theirs);
    const Rule& rule = planner_.Rules().rules[result.rule];
    Line& line = LineOf(rule.name, false, result.rule);
    ++line.asked;
    line.agree += agrees;
    Difference difference{rule.group.empty() ? rule.name : rule.group, PlaceOfComponent(file), result.value,
                          theirs};
    if (rule.group.empty()) {
      if (!agrees) Keep(std::move(difference));
      continue;
    }
    // Of one group some rule may be the right one for the component, as with walls measured net or gross:
    // what counts is whether any of them meets the number, and how near the nearest came.
    auto [group, fresh] = groups.try_emplace(rule.group, Group{result.rule, false, difference});
    group->second.agrees |= agrees;
    if (std::fabs(difference.Share()) < std::fabs(group->second.nearest.Share()))
      group->second.nearest = difference;
  }
  for (const auto& [name, group] : groups) {
    Line& line = LineOf(name, true, group.rule);
    ++line.asked;
    line.agree += group.agrees;
    if (!group.agrees) Keep(group.nearest);
  }
}

// As the rules stand in their file, the groups behind them.
std::vector<const Comparison::Line*> Comparison::InOrder() const {
  std::vector<const Line*> order;
  for (const auto& [key, line] : lines_) order.push_back(&line);
  std::stable_sort(order.begin(), order.end(), [](const Line* a, const Line* b) {
    return std::pair(a->is_group, a->rule) < std::pair(b->is_group, b->rule);
  });
  return order;
}

void Comparison::Print(std::ostream& out) const {
  using Side = TextTable::Side;
  TextTable table({{Say("Agrees with the file within {} %", {PlainReal(tolerance_ * 100)})},
                   {Say("asked of"), Side::kRight},
                   {Say("agree"), Side::kRight},
                   {Say("share"), Side::kRight}});
  for (const Line* line : InOrder()) {
    // A line is made when a component is asked, so its count is never 0.
    const double share = 100 * static_cast<double>(line->agree) / static_cast<double>(line->asked);
    table.Add({line->name, std::to_string(line->asked), std::to_string(line->agree),
               PlainReal(std::round(share * 10) / 10) + " %"});
  }
  table.Print(out);
  PrintDifferences(out);
}

// The largest first.
void Comparison::PrintDifferences(std::ostream& out) const {
  if (differences_.empty()) return;
  std::vector<const Difference*> order;
  for (const Difference& difference : differences_) order.push_back(&difference);
  std::stable_sort(order.begin(), order.end(), [](const Difference* a, const Difference* b) {
    return std::fabs(a->Share()) > std::fabs(b->Share());
  });
  using Side = TextTable::Side;
  out << "\n";
  TextTable table({{Say("Differs")},
                   {Say("Component")},
                   {Say("worked"), Side::kRight},
                   {Say("in the file"), Side::kRight},
                   {Say("by"), Side::kRight}});
  for (std::size_t i = 0; i < std::min(order.size(), kShownDifferences); ++i) {
    const Difference& difference = *order[i];
    table.Add({difference.name, difference.component, PlainReal(difference.ours),
               PlainReal(difference.theirs), PlainReal(std::round(difference.Share() * 1000) / 10) + " %"});
  }
  table.Print(out);
  const auto more =
      static_cast<long long>(order.size()) - static_cast<long long>(kShownDifferences) + beyond_;
  if (more > 0) out << Say("and {} more, in the JSON text", {std::to_string(more)}) << "\n";
}

void Comparison::Write(JsonText& json) const {
  json.Key("comparison").Open('[');
  for (const Line* line : InOrder()) {
    json.Open('{');
    json.Key("name").String(line->name);
    json.Key("group").Bool(line->is_group);
    json.Key("asked").Number(line->asked);
    json.Key("agree").Number(line->agree);
    json.Close('}');
  }
  json.Close(']');
  json.Key("differences").Open('[');
  for (const Difference& difference : differences_) {
    json.Open('{');
    json.Key("name").String(difference.name);
    json.Key("component").String(difference.component);
    json.Key("worked").Number(difference.ours);
    json.Key("stored").Number(difference.theirs);
    json.Key("share").Number(difference.Share());
    json.Close('}');
  }
  json.Close(']');
  json.Key("more_differences").Number(beyond_);
}

}  // namespace lorv::tool
