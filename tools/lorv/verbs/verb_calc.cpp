#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <vector>

#include "TEXPRESSCAL/formula_words.h"
#include "framework/text/number_text.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/formula/calculation.h"
#include "tools/lorv/formula/fault_report.h"
#include "tools/lorv/formula/formula_lines.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/takeoff/evaluate/precision.h"

// The verb `calc`: evaluates one formula, or one a line of standard input, for scripts and for people who
// look for the slip in a formula. It prints the number alone unless more is asked for, so that a shell can
// take it as it is.

namespace lorv::tool {

Work DeclareCalc(VerbSyntax& syntax);

namespace {

struct CalcArguments {
  std::string formula;
  std::vector<std::string> values;
  bool suite_values = false;
  bool strict = false;
  bool explain = false;
  bool json = false;
};

constexpr const char* kHelp =
    "A name is letters of any language, digits and _; capitals and small letters are the same. A name "
    "without a\n"
    "value is an error. Values count with all their digits; --suite-values works as the suite does, with "
    "three\n"
    "decimals and a third for what is near one, and says where that makes a difference. A text goes in "
    "single\n"
    "quotes. The formula - reads formulas from standard input, one a line.\n"
    "\n"
    "Examples:\n"
    "  lorv calc \"L*B*H\" L=3.6 B=0.24 H=2.8\n"
    "  lorv calc --explain \"2*(墙长+B)*IIF(H>3,1.2,1)\" 墙长=6 B=0.24 H=3.3\n"
    "  lorv calc \"FIND(CLMC,'砖')>0\" \"CLMC='砖墙'\"\n"
    "  lorv calc -2^2                       a sign binds tighter than ^: 4\n"
    "  lorv calc - L=2 <formulas.txt\n"
    "\n"
    "Exit code 0: the number is printed. 1: the formula is wrong, a mark shows where; or it gives a number\n"
    "that does not mean what it seems to. 2: a wrong argument.";

class CalcRun {
 public:
  CalcRun(const CalcArguments& arguments, Console& console)
      : arguments_(arguments), console_(console), pairs_(ReadNameValues(arguments.values)) {}

  int Run() {
    return ForEachFormula({arguments_.formula, arguments_.json ? &json_ : nullptr}, console_,
                          [this](const std::string& formula, long long line) { return One(formula, line); });
  }

 private:
  int One(const std::string& formula, long long line);
  void Compare();
  void Explain() const;
  void Write();
  int Report(long long line);

  const CalcArguments& arguments_;
  Console& console_;
  std::vector<NameValue> pairs_;
  JsonText json_;
  Calculation result_;
  std::optional<double> exact_;  // beside the suite's, where they print differently
  bool is_coarse_ = false;
};

int CalcRun::One(const std::string& formula, long long line) {
  const CString typed = CString::FromUtf8(formula);
  // Forgotten first: of many formulas each is reported by itself.
  exact_.reset();
  is_coarse_ = false;
  result_ = arguments_.suite_values ? CalculateAsSuite(typed, pairs_) : CalculateExactly(typed, pairs_);
  if (arguments_.suite_values) Compare();
  return Report(line);
}

// What three decimals and thirds made of the number.
void CalcRun::Compare() {
  // Doubts are of the formula as it is meant, whatever digits its values have.
  const Calculation exact = CalculateExactly(result_.typed, pairs_);
  result_.doubts = exact.doubts;
  // Where there is no number with all digits, the suite's hides why.
  if (!result_.fault && exact.fault) result_.fault = exact.fault;
  // Compared as they are printed: digits that are not shown make no difference.
  if (!result_.value || !exact.value || PlainReal(*result_.value) == PlainReal(*exact.value)) return;
  exact_ = exact.value;
  is_coarse_ = std::fabs(*result_.value - *exact_) > Precision::kTolerable * std::fabs(*exact_);
}

void CalcRun::Explain() const {
  std::ostream& out = console_.out;
  out << PadRight(Say("formula"), 8) << " " << Printable(result_.typed.ToUtf8()) << "\n";
  // Once a name, in the order of the formula, so that it can be read beside it.
  std::set<CString> reported;
  for (const FormulaWord& word : NamesOf(result_.typed.View())) {
    const CString key = NameKey(word.name.View());
    if (!reported.insert(key).second) continue;
    const auto pair = std::find_if(pairs_.begin(), pairs_.end(),
                                   [&](const NameValue& value) { return NameKey(value.name.View()) == key; });
    const std::string value = pair == pairs_.end() ? Say("(no value)")
                              : pair->is_text      ? pair->text.ToUtf8()
                                                   : PlainReal(pair->number);
    out << PadRight(reported.size() == 1 ? Say("names") : "", 8) << " " << PadRight(word.name.ToUtf8(), 12)
        << " = " << Printable(value) << "\n";
  }
  // A value that no name took is most often a name misspelt in the formula.
  for (const NameValue& pair : pairs_) {
    if (reported.contains(NameKey(pair.name.View()))) continue;
    out << PadRight(Say("not used"), 8) << " " << pair.name.ToUtf8() << "\n";
  }
  out << PadRight(Say("worked"), 8) << " " << Printable(result_.with_values.ToUtf8()) << "\n";
  if (result_.value) out << PadRight(Say("result"), 8) << " " << PlainReal(*result_.value) << "\n";
}

void CalcRun::Write() {
  json_.Open('{');
  json_.Key("formula").String(result_.typed.ToUtf8());
  json_.Key("names").Open('[');
  for (const FormulaWord& word : NamesOf(result_.typed.View())) json_.String(word.name.ToUtf8());
  json_.Close(']');
  json_.Key("worked").String(result_.with_values.ToUtf8());
  json_.Key("digits").String(arguments_.suite_values ? "suite" : "all");
  json_.Key("result");
  if (result_.value) {
    json_.Number(*result_.value);
  } else {
    json_.Null();
  }
  if (exact_) json_.Key("with_all_digits").Number(*exact_);
  WriteFault(json_, result_.fault);
  WriteDoubts(json_, result_.doubts);
  json_.Close('}');
}

int CalcRun::Report(long long line) {
  if (arguments_.json) {
    Write();
  } else if (arguments_.explain) {
    Explain();
  } else if (result_.value) {
    console_.out << PlainReal(*result_.value) << "\n";
  } else if (line > 0) {
    // A line for every formula, so that both can be put side by side.
    console_.out << "\n";
  }
  if (!arguments_.json) {
    if (result_.fault) PrintFault(console_, result_.typed, *result_.fault, line);
    PrintDoubts(console_, result_.typed, result_.doubts, line);
    if (exact_) {
      console_.err << "lorv: "
                   << Say("note: with all digits of the values it is {}: the suite works with three "
                          "decimals, and with a "
                          "third for what is near one",
                          {PlainReal(*exact_)})
                   << "\n";
    }
  }
  // A script must not take for good what decimals and thirds have changed by more than a bill may be off.
  if (result_.fault || is_coarse_) return kResultFailed;
  return arguments_.strict && !result_.doubts.empty() ? kResultFailed : kFine;
}

}  // namespace

Work DeclareCalc(VerbSyntax& syntax) {
  auto arguments = std::make_shared<CalcArguments>();
  syntax.Value("FORMULA", arguments->formula, "the formula; - reads standard input").Required();
  syntax.Value("NAME=VALUE", arguments->values, "what its names stand for");
  syntax.Flag("-e,--explain", arguments->explain, "show the names, and the text with their values");
  syntax.Flag("--suite-values", arguments->suite_values,
              "values as the suite has them: three decimals, and a third for what is near one");
  syntax.Flag("--strict", arguments->strict, "exit code 1 for a doubtful formula, too");
  syntax.Flag("-j,--json", arguments->json, "print it all as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return CalcRun(*arguments, console).Run(); };
}

}  // namespace lorv::tool
