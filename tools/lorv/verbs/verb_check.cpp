#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <vector>

#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/formula/calculation.h"
#include "tools/lorv/formula/fault_report.h"
#include "tools/lorv/formula/formula_lines.h"
#include "tools/lorv/language/spoken_language.h"

// The verbs `check` and `vars`: what can be said of a formula before any value is there. Nothing proves a
// formula right for all values, so several are tried, and what all of them meet is wrong.

namespace lorv::tool {
namespace {

struct CheckArguments {
  std::string formula;
  std::vector<std::string> names;
  bool json = false;
  bool all = false;
  bool strict = false;
};

// What names count where a formula is only looked at: all of them the first number, and so on; what is wrong
// with all of these is wrong whatever the values. `step` makes them differ from name to name.
struct Trial {
  double first;
  double step;
};
constexpr Trial kTrials[] = {{1000000, 0}, {1, 0}, {0.5, 0}, {2, 1}, {0.1, 0.07}, {-3, 0}, {1000, -7}};

constexpr const char* kCheckHelp =
    "Says whether a formula can be calculated: wrong is what fails with all of several values for its names. "
    "With\n"
    "NAMES only those may stand in it, without any name may.\n"
    "\n"
    "Examples:\n"
    "  lorv check \"2*(L+B)*H\"\n"
    "  lorv check \"墙长*墙高\" 墙长 墙高 墙厚\n"
    "  lorv check \"A/(A-A)\"          a divisor that is always 0\n"
    "\n"
    "  lorv check - <formulas.txt      reports those that are not fine\n"
    "\n"
    "What is doubtful (arguments that no function uses, 3.4.5, a text where a number belongs) is reported as "
    "a "
    "warning.\n"
    "Exit code 0: it can. 1: it cannot, a mark shows why.";

constexpr const char* kVarsHelp =
    "Lists the names that a formula needs values for, in its order, each once.\n"
    "\n"
    "Examples:\n"
    "  lorv vars \"2*(L+B)*H-门洞\"\n"
    "  lorv vars --all \"A+B*A\"       with repeats: A, B, A";

// What is found about a formula whose names may have any value.
struct Finding {
  std::optional<Fault> fault;
  std::vector<Fault> doubts;
};

Calculation EvaluateTrial(const CString& formula, std::vector<NameValue> values, const Trial& trial) {
  double number = trial.first;
  for (NameValue& value : values) {
    value.number = number;
    number += trial.step;
  }
  return CalculateExactly(formula, values);
}

// Of values that make it fail and others that do not, the latter count.
Finding BestFinding(const CString& formula, const std::vector<NameValue>& values) {
  std::optional<Finding> best;
  for (const Trial& trial : kTrials) {
    const Calculation outcome = EvaluateTrial(formula, values, trial);
    // A syntax error is one whatever the values: nothing else needs to be tried.
    if (outcome.fault && outcome.fault->syntax) return {outcome.fault, outcome.doubts};
    const bool mends = best && best->fault && !outcome.fault;
    // Fractions would hide what is too large for every measure that a building has.
    const bool clears = best && best->fault.has_value() == outcome.fault.has_value() &&
                        outcome.doubts.size() < best->doubts.size() && std::fabs(trial.first) >= 1;
    if (!best || mends || clears) best = Finding{outcome.fault, outcome.doubts};
  }
  return *best;
}

Finding FindingOf(const CString& formula, const std::vector<std::string>& names) {
  std::set<CString> allowed;
  for (const std::string& name : names) allowed.insert(NameKey(CString::FromUtf8(name).View()));
  std::vector<NameValue> values;
  std::set<CString> known;
  for (const FormulaWord& word : NamesOf(formula.View())) {
    const CString key = NameKey(word.name.View());
    if (!allowed.empty() && !allowed.contains(key)) {
      return {Fault{word.position, word.length,
                    Say("the name '{}' is not among those allowed", {word.name.ToUtf8()}), true, true},
              {}};
    }
    if (known.insert(key).second) values.push_back({word.name, false, {}, 0});
  }
  return BestFinding(formula, values);
}

class CheckRun {
 public:
  CheckRun(const CheckArguments& arguments, Console& console) : arguments_(arguments), console_(console) {}

  int Run() {
    for (const std::string& name : arguments_.names) {
      // A slip in a name here would make every formula wrong that has the right one.
      if (!IsName(CString::FromUtf8(name).View()))
        throw BadInput(Say("\"{}\" cannot be a name in a formula", {name}));
    }
    return ForEachFormula({arguments_.formula, arguments_.json ? &json_ : nullptr}, console_,
                          [this](const std::string& formula, long long line) { return One(formula, line); });
  }

 private:
  int One(const std::string& text, long long line);
  void Write(const std::string& text, const Finding& finding);

  const CheckArguments& arguments_;
  Console& console_;
  JsonText json_;
};

int CheckRun::One(const std::string& text, long long line) {
  const CString formula = CString::FromUtf8(text);
  const Finding finding = FindingOf(formula, arguments_.names);
  if (arguments_.json) {
    Write(text, finding);
  } else {
    if (finding.fault) PrintFault(console_, formula, *finding.fault, line);
    PrintDoubts(console_, formula, finding.doubts, line);
    // Of many formulas only those are reported that are not fine.
    if (!finding.fault && finding.doubts.empty() && line == 0)
      console_.out << Say("the formula is fine") << "\n";
  }
  return finding.fault || (arguments_.strict && !finding.doubts.empty()) ? kResultFailed : kFine;
}

void CheckRun::Write(const std::string& text, const Finding& finding) {
  json_.Open('{');
  json_.Key("formula").String(text);
  json_.Key("valid").Bool(!finding.fault);
  WriteFault(json_, finding.fault);
  WriteDoubts(json_, finding.doubts);
  json_.Close('}');
}

int ListNames(const CheckArguments& arguments, Console& console) {
  const CString formula = CString::FromUtf8(arguments.formula);
  std::set<CString> reported;
  std::vector<std::string> names;
  for (const FormulaWord& word : NamesOf(formula.View())) {
    if (reported.insert(NameKey(word.name.View())).second || arguments.all)
      names.push_back(word.name.ToUtf8());
  }
  // An empty list allows any name.
  const std::optional<Fault> fault = FindingOf(formula, {}).fault;
  if (arguments.json) {
    JsonText json;
    json.Open('{');
    json.Key("names").Open('[');
    for (const std::string& name : names) json.String(name);
    json.Close(']');
    WriteFault(json, fault);
    json.Close('}');
    console.out << json.Text();
    return fault ? kResultFailed : kFine;
  }
  // What cannot be read has no names to rely on.
  if (fault && fault->syntax) {
    PrintFault(console, formula, *fault);
    return kResultFailed;
  }
  for (const std::string& name : names) console.out << name << "\n";
  return kFine;
}

}  // namespace

Work DeclareCheck(VerbSyntax& syntax) {
  auto arguments = std::make_shared<CheckArguments>();
  syntax.Value("FORMULA", arguments->formula, "the formula; - reads standard input, one a line").Required();
  syntax.Flag("--strict", arguments->strict, "exit code 1 for a doubtful formula, too");
  syntax.Value("NAMES", arguments->names, "the names it may use");
  syntax.Flag("-j,--json", arguments->json, "print the answer as JSON");
  syntax.Footer(kCheckHelp);
  return [arguments](Console& console) { return CheckRun(*arguments, console).Run(); };
}

Work DeclareVars(VerbSyntax& syntax) {
  auto arguments = std::make_shared<CheckArguments>();
  syntax.Value("FORMULA", arguments->formula, "the formula").Required();
  syntax.Flag("--all", arguments->all, "a name as often as it stands in the formula");
  syntax.Flag("-j,--json", arguments->json, "print the list as JSON");
  syntax.Footer(kVarsHelp);
  return [arguments](Console& console) { return ListNames(*arguments, console); };
}

}  // namespace lorv::tool
