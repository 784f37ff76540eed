#include <CLI/CLI.hpp>
#include <ostream>
#include <set>

#include "tools/lorv/formula/fault_report.h"
#include "tools/lorv/formula/formula_words.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {
namespace {

struct CheckArguments {
  std::string formula;
  std::vector<std::string> names;
  bool json = false;
  bool all = false;
};

// What a name counts where a formula is only looked at.
constexpr double kAnyValue = 1000000;

constexpr const char* kCheckHelp =
    "Tells whether a formula can be worked, whatever the values: each name counts 1000000. With NAMES only "
    "those\n"
    "may stand in it, without any name may.\n"
    "\n"
    "Examples:\n"
    "  lorv check \"2*(L+B)*H\"\n"
    "  lorv check \"墙长*墙高\" 墙长 墙高 墙厚\n"
    "  lorv check \"A/(A-A)\"          a divisor that is always 0\n"
    "\n"
    "Exit code 0: it can. 1: it cannot, a mark shows why.";

constexpr const char* kVarsHelp =
    "Lists the names that a formula needs values for, in its order, each once.\n"
    "\n"
    "Examples:\n"
    "  lorv vars \"2*(L+B)*H-门洞\"\n"
    "  lorv vars --all \"A+B*A\"       with repeats: A, B, A";

std::optional<Fault> FaultWithNames(const CString& formula, const std::vector<std::string>& names) {
  if (formula.IsEmpty()) return Fault{0, 0, "the formula is empty", true, true};
  std::set<CString> allowed;
  for (const std::string& name : names) allowed.insert(NameKey(CString::FromUtf8(name).View()));
  CMapValue values;
  for (const FormulaWord& word : NamesOf(formula.View())) {
    const CString key = NameKey(word.name.View());
    if (!allowed.empty() && !allowed.contains(key)) {
      return Fault{word.position, word.length,
                   "the name '" + word.name.ToUtf8() + "' is not among those allowed", true, true};
    }
    if (word.length > static_cast<int>(CStrCmp::kCapacity)) {
      return Fault{word.position, word.length,
                   "a name has at most " + std::to_string(CStrCmp::kCapacity) + " characters", true, true};
    }
    values[key] = kAnyValue;
  }
  return FaultOf(formula, values, {});
}

int Check(const CheckArguments& arguments, Console& console) {
  const CString formula = CString::FromUtf8(arguments.formula);
  for (const std::string& name : arguments.names) {
    if (!IsName(CString::FromUtf8(name).View()))
      throw BadInput("\"" + name + "\" cannot be a name in a formula");
  }
  const std::optional<Fault> fault = FaultWithNames(formula, arguments.names);
  if (arguments.json) {
    JsonText json;
    json.Open('{');
    json.Key("formula").String(arguments.formula);
    json.Key("valid").Bool(!fault);
    WriteFault(json, fault);
    json.Close('}');
    console.out << json.Text();
  } else if (fault) {
    PrintFault(console, formula, *fault);
  } else {
    console.out << "the formula is fine\n";
  }
  return fault ? kResultFailed : kFine;
}

int ListNames(const CheckArguments& arguments, Console& console) {
  const CString formula = CString::FromUtf8(arguments.formula);
  std::set<CString> told;
  std::vector<std::string> names;
  for (const FormulaWord& word : NamesOf(formula.View())) {
    if (told.insert(NameKey(word.name.View())).second || arguments.all) names.push_back(word.name.ToUtf8());
  }
  const std::optional<Fault> fault = FaultWithNames(formula, {});
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

Work DeclareCheck(CLI::App& app) {
  auto arguments = std::make_shared<CheckArguments>();
  app.add_option("FORMULA", arguments->formula, "the formula")->required();
  app.add_option("NAMES", arguments->names, "the names it may use");
  app.add_flag("--json", arguments->json, "print the answer as JSON");
  app.footer(kCheckHelp);
  return [arguments](Console& console) { return Check(*arguments, console); };
}

Work DeclareVars(CLI::App& app) {
  auto arguments = std::make_shared<CheckArguments>();
  app.add_option("FORMULA", arguments->formula, "the formula")->required();
  app.add_flag("--all", arguments->all, "a name as often as it stands in the formula");
  app.add_flag("--json", arguments->json, "print the list as JSON");
  app.footer(kVarsHelp);
  return [arguments](Console& console) { return ListNames(*arguments, console); };
}

}  // namespace lorv::tool
