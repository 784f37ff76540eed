#include "tools/lorv/takeoff/findings/coverage.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"

// What a take-off passed over: a bill that looks whole may lack a class that no rule names. All of it is
// counted while components are evaluated, and reported at the end with the reasons that the counts give.

namespace lorv::tool {
namespace {

// More are in the JSON text.
constexpr std::size_t kShownClasses = 12;

const char* MessageOf(Absence::What what) {
  switch (what) {
    case Absence::kColumn:
      return "the components file has no column \"{}\": its values count as missing";
    case Absence::kCompare:
      return "the components file has no column \"{}\" to compare with";
    default:
      return "nothing is named \"{}\" here: its values count as missing";
  }
}

const char* WordOf(Absence::What what) {
  return what == Absence::kColumn ? "column" : what == Absence::kCompare ? "compare" : "name";
}

}  // namespace

void Coverage::AddClassWithoutRule(const std::string& class_name) {
  ++classes_[class_name];
}

std::vector<Coverage::Unused> Coverage::UnusedRules() const {
  std::vector<Unused> unused;
  // Ratios and declarations are not calculated for components: nothing is counted of them.
  for (std::size_t i = 0; i < rules_.size(); ++i) {
    const RuleKind kind = planner_.Rules().rules[i].kind;
    const Counts& counts = rules_[i];
    if ((kind != RuleKind::kQuantity && kind != RuleKind::kStep) || counts.evaluated + counts.failed > 0)
      continue;
    // The counts stand in the order of the work, so the first one that is 0 is where the rule stopped.
    const char* reason = counts.fit == 0     ? "no component is of its classes"
                         : counts.tried == 0 ? "a row above of the same name always counts first"
                         : counts.held == 0  ? "its condition never holds"
                                             : "a value is always missing";
    unused.push_back({i, reason});
  }
  return unused;
}

bool Coverage::IsComplete() const {
  return classes_.empty() && planner_.Absences().empty() && UnusedRules().empty();
}

void Coverage::Print(std::ostream& out) const {
  const RuleSet& rules = planner_.Rules();
  std::size_t shown = 0;
  for (const auto& [name, count] : classes_) {
    // A model can name each component a class of its own: the screen has the first few.
    if (++shown > kShownClasses) break;
    const std::string words = Printable(name), number = std::to_string(count);
    out << "lorv: "
        << (name.empty() ? Say("note: components without a class have no rules: {}", {number})
            : count == 1 ? Say("note: no rule is for the class \"{}\" (1 component)", {words})
                         : Say("note: no rule is for the class \"{}\" ({} components)", {words, number}))
        << "\n";
  }
  if (shown > kShownClasses) {
    out << "lorv: "
        << Say("note: and {} more classes without a rule", {std::to_string(classes_.size() - kShownClasses)})
        << "\n";
  }
  for (const Absence& absence : planner_.Absences()) {
    out << Printable(PlaceText(rules.file, rules.rules[absence.rule].place)) << Say("note: ")
        << Printable(rules.rules[absence.rule].name) << ": "
        << Say(MessageOf(absence.what), {Printable(absence.name)}) << "\n";
  }
  for (const Unused& unused : UnusedRules()) {
    const Rule& rule = rules.rules[unused.rule];
    out << Printable(PlaceText(rules.file, rule.place)) << Say("note: ")
        << Say("{} was never calculated: {}", {Printable(rule.name), Say(unused.reason)}) << "\n";
  }
}

void Coverage::Write(JsonText& json) const {
  const RuleSet& rules = planner_.Rules();
  json.Key("classes_without_rule").Open('[');
  for (const auto& [name, count] : classes_) {
    json.Open('{');
    json.Key("class").String(name);
    json.Key("components").Number(count);
    json.Close('}');
  }
  json.Close(']');
  json.Key("absent").Open('[');
  for (const Absence& absence : planner_.Absences()) {
    json.Open('{');
    json.Key("line").Number(rules.rules[absence.rule].place.line);
    json.Key("rule").String(rules.rules[absence.rule].name);
    json.Key("what").String(WordOf(absence.what));
    json.Key("name").String(absence.name);
    json.Close('}');
  }
  json.Close(']');
  json.Key("unused_rules").Open('[');
  for (const Unused& unused : UnusedRules()) {
    json.Open('{');
    json.Key("line").Number(rules.rules[unused.rule].place.line);
    json.Key("rule").String(rules.rules[unused.rule].name);
    json.Key("reason").String(Say(unused.reason));
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
