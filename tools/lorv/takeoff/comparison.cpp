#include "tools/lorv/takeoff/comparison.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "tools/lorv/text/column_text.h"

namespace lorv::tool {

Comparison::Line& Comparison::LineOf(const std::string& name, bool is_group, std::size_t rule) {
  Line& line = lines_.try_emplace({is_group, name}, Line{name, is_group, rule, 0, 0}).first->second;
  line.rule = std::min(line.rule, rule);
  return line;
}

void Comparison::Add(const ComponentsFile& file, const std::vector<Result>& results) {
  std::map<std::string, std::pair<std::size_t, bool>> groups;
  for (const Result& result : results) {
    const auto stored = planner_.StoredOf(result.rule);
    if (result.state != Result::kWorked || !stored) continue;
    const std::optional<double> number = WholeNumber(file.Row()[stored->column]);
    if (!number) continue;
    const double theirs = *number * stored->factor;
    const bool agrees = std::fabs(result.value - theirs) <= tolerance_ * std::fabs(theirs);
    const Rule& rule = planner_.Rules().rules[result.rule];
    Line& line = LineOf(rule.name, false, result.rule);
    ++line.asked;
    line.agree += agrees;
    if (rule.group.empty()) continue;
    auto& [first, any] = groups.try_emplace(rule.group, result.rule, false).first->second;
    any |= agrees;
  }
  for (const auto& [name, found] : groups) {
    Line& line = LineOf(name, true, found.first);
    ++line.asked;
    line.agree += found.second;
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
  TextTable table({{"Agrees with the file within " + PlainReal(tolerance_ * 100) + " %"},
                   {"asked of", Side::kRight},
                   {"agree", Side::kRight},
                   {"share", Side::kRight}});
  for (const Line* line : InOrder()) {
    const double share = 100 * static_cast<double>(line->agree) / static_cast<double>(line->asked);
    table.Add({line->name, std::to_string(line->asked), std::to_string(line->agree),
               PlainReal(std::round(share * 10) / 10) + " %"});
  }
  table.Print(out);
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
}

}  // namespace lorv::tool
