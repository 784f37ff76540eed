#include "tools/lorv/takeoff/findings/unit_check.h"

#include <cmath>
#include <ostream>

#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/takeoff/plan/ready_block.h"
#include "tools/lorv/text/folded_text.h"

// Looks for the slip that costs most and shows least: millimetres of a model used as metres, so that a
// volume is a thousand million times too large. It looks at titles and values alone and stops nothing, as
// it may be wrong.

namespace lorv::tool {
namespace {

// Enough to know a column by, and little beside the work itself.
constexpr long long kComponentsSeen = 5000;
// One or two whole numbers say nothing.
constexpr long long kFewestValues = 3;
// A hundred metres is more than nearly all dimensions of components have.
constexpr double kLarge = 100;

bool IsMetric(const std::string& unit) {
  for (const char* metric : {"m", "m2", "m3", "㎡", "m²", "m³", "米", "平方米", "立方米"}) {
    if (unit == metric) return true;
  }
  return false;
}

bool SaysMillimetres(const std::string& title) {
  const std::string folded = Folded(title);
  for (const char* mark : {"(mm)", "（mm）", "[mm]", "/mm", "_mm", " mm", "毫米"}) {
    if (folded.find(mark) != std::string::npos) return true;
  }
  return false;
}

// Some literal, or the factor, changes millimetres into metres. Any 1000 will do: a warning too few is better
// here than one that comes with every run.
bool SeesToUnits(const Rule& rule) {
  const std::string text = rule.formula.ToUtf8();
  return std::fabs(rule.factor) <= 0.001 || text.find("1000") != std::string::npos ||
         text.find("0.001") != std::string::npos;
}

}  // namespace

UnitCheck::UnitCheck(const Planner& planner) : planner_(planner) {
  const std::vector<Rule>& rules = planner.Rules().rules;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    if (rules[i].kind == RuleKind::kStep) steps_.emplace(NameKey(CString::FromUtf8(rules[i].name).View()), i);
  }
}

void UnitCheck::Look(const ComponentsFile& file) {
  if (++components_ > kComponentsSeen) return;
  seen_.resize(planner_.Dimensions().size());
  for (std::size_t i = 0; i < seen_.size(); ++i) {
    const Dimension& dimension = planner_.Dimensions()[i];
    if (!dimension.column) continue;
    bool is_text = false;
    const std::optional<double> value =
        NumberOfCell(file.Row()[*dimension.column], dimension.factor, is_text);
    // Zero is a zero in any unit.
    if (!value || *value == 0) continue;
    Seen& seen = seen_[i];
    ++seen.values;
    seen.whole += *value == std::floor(*value);
    seen.large += std::fabs(*value) >= kLarge;
    if (seen.example == 0 || std::fabs(*value) > std::fabs(seen.example)) seen.example = *value;
  }
}

bool UnitCheck::LooksLikeMillimetres(std::size_t index) const {
  if (index >= seen_.size()) return false;
  const Seen& seen = seen_[index];
  const Dimension& dimension = planner_.Dimensions()[index];
  // A column with a factor was given a unit by the rules.
  if (seen.values == 0 || dimension.factor != 1) return false;
  if (SaysMillimetres(dimension.name)) return true;
  // Some small ones are let pass, as thicknesses stand among lengths.
  return seen.values >= kFewestValues && seen.whole == seen.values && seen.large * 4 >= seen.values * 3;
}

// The rows above that a name may mean: each of them where a step has alternatives.
std::vector<std::size_t> UnitCheck::StepsNamed(const CString& key, std::size_t above) const {
  std::vector<std::size_t> steps;
  const auto [first, end] = steps_.equal_range(key);
  for (auto step = first; step != end; ++step) {
    if (step->second < above) steps.push_back(step->second);
  }
  return steps;
}

// Which rules a value comes of: the rule, and the steps above it that it leans on, each once. A step that
// sees to the units ends the way: whatever comes into it is in metres from there on.
std::set<std::size_t> UnitCheck::RulesBelow(std::size_t rule) const {
  std::set<std::size_t> seen;
  std::vector<std::size_t> open = {rule};
  while (!open.empty()) {
    const std::size_t at = open.back();
    open.pop_back();
    const Rule& row = planner_.Rules().rules[at];
    if (SeesToUnits(row) || !seen.insert(at).second) continue;
    for (const FormulaWord& word : NamesOf(row.formula.View())) {
      const std::vector<std::size_t> steps = StepsNamed(NameKey(word.name.View()), at);
      open.insert(open.end(), steps.begin(), steps.end());
    }
  }
  return seen;
}

// The dimensions in millimetres that the rule's value comes of.
std::set<std::size_t> UnitCheck::MillimetresIn(std::size_t rule) const {
  std::set<std::size_t> found;
  for (const std::size_t at : RulesBelow(rule)) {
    for (const FormulaWord& word : NamesOf(planner_.Rules().rules[at].formula.View())) {
      const CString key = NameKey(word.name.View());
      const Symbol symbol = planner_.NameOf(key);
      // A step hides a column of the same name from the rows below it.
      if (symbol.kind != Symbol::kDimension || !StepsNamed(key, at).empty()) continue;
      if (LooksLikeMillimetres(symbol.index)) found.insert(symbol.index);
    }
  }
  return found;
}

std::vector<UnitCheck::Finding> UnitCheck::Findings() const {
  std::vector<Finding> findings;
  const RuleSet& rules = planner_.Rules();
  for (std::size_t rule = 0; rule < rules.rules.size(); ++rule) {
    const Rule& row = rules.rules[rule];
    if (row.kind != RuleKind::kQuantity || !IsMetric(row.unit)) continue;
    for (const std::size_t dimension : MillimetresIn(rule)) findings.push_back({rule, dimension});
  }
  return findings;
}

void UnitCheck::Print(std::ostream& out) const {
  const RuleSet& rules = planner_.Rules();
  for (const Finding& finding : Findings()) {
    const Rule& rule = rules.rules[finding.rule];
    const std::string example = PlainReal(seen_[finding.dimension].example);
    out << Printable(PlaceText(rules.file, rule.formula_place)) << Say("warning: ")
        << Say("{} is in {}, but the values of \"{}\" look like millimetres (such as {}); a row of kind "
               "\"column\" "
               "with the factor 0.001 makes metres of them",
               {Printable(rule.name), rule.unit, Printable(planner_.Dimensions()[finding.dimension].name),
                example})
        << "\n";
  }
}

void UnitCheck::Write(JsonText& json) const {
  json.Key("units").Open('[');
  for (const Finding& finding : Findings()) {
    const Rule& rule = planner_.Rules().rules[finding.rule];
    json.Open('{');
    json.Key("line").Number(rule.place.line);
    json.Key("rule").String(rule.name);
    json.Key("unit").String(rule.unit);
    json.Key("column").String(planner_.Dimensions()[finding.dimension].name);
    json.Key("example").Number(seen_[finding.dimension].example);
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
