#include <memory>
#include <ostream>
#include <vector>

#include "TEXPRESSCAL/optimize_expression.h"
#include "TEXPRESSCAL/simplify_safely.h"
#include "framework/objects/exceptions.h"
#include "framework/text/number_text.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The verb `simplify`: a shorter formula of the same value, or what the suite's own rules make of it. The
// safe way is the default, since the suite's rules work on characters and may change what a formula gives.

namespace lorv::tool {
namespace {

struct SimplifyArguments {
  std::string formula;
  std::vector<std::string> rules;
  std::vector<std::string> values;
  bool suite = false;
  bool json = false;
  bool any_zero = false;
};

constexpr const char* kHelp =
    "A shorter formula that gives the same value and the same error for any values of its names, to the last "
    "bit.\n"
    "With --suite: the suite's own rules, which work on characters and do not know the grammar. They may "
    "change what\n"
    "a formula gives (\"sin(a*0)\" becomes \"s0)\"); the result is in small letters. Rules: zero, max, min, "
    "iif.\n"
    "\n"
    "Examples:\n"
    "  lorv simplify \"1*A+IIF(2>1,B,C/0)\"                     A+(B)\n"
    "  lorv simplify --any-zero \"a*0+b\"                       b\n"
    "  lorv simplify --suite \"max(1,2)+0*c\" --rules max       2+0*c\n"
    "  lorv simplify --suite \"max(墙高,2)\" --value 墙高=3      墙高\n"
    "\n"
    "Exit code 1: the suite's rules found a division by zero, or a call that they cannot fold.";

int FlagsOf(const std::vector<std::string>& rules) {
  // The names were checked when the arguments were read.
  if (rules.empty()) return COptimizeExpression::kAllRules;
  int flags = 0;
  for (const std::string& rule : rules) {
    if (rule == "zero") flags |= COptimizeExpression::kZeroRules;
    if (rule == "max") flags |= COptimizeExpression::kFoldMax;
    if (rule == "min") flags |= COptimizeExpression::kFoldMin;
    if (rule == "iif") flags |= COptimizeExpression::kFoldIif;
  }
  return flags;
}

void TakeValues(const std::vector<std::string>& values, COptimizeExpression& simplifier) {
  for (const std::string& pair : values) {
    const CString text = CString::FromUtf8(pair);
    const int equals = text.Find('=');
    const CString number = text.Mid(equals + 1);
    std::size_t used = 0;
    const double value = ReadReal(number.View(), &used);
    // The whole text: "3x" is no 3.
    const bool whole = used == static_cast<std::size_t>(number.GetLength());
    if (equals < 1 || used == 0 || !whole) throw BadInput(Say("\"{}\" is no NAME=NUMBER", {pair}));
    simplifier.SetKeyValue(text.Left(equals), value);
  }
}

void Print(const SimplifyArguments& arguments, const CString& simplified, Console& console) {
  if (!arguments.json) {
    console.out << simplified.ToUtf8() << "\n";
    return;
  }
  JsonText json;
  json.Open('{');
  json.Key("formula").String(arguments.formula);
  json.Key("simplified").String(simplified.ToUtf8());
  json.Key("by").String(arguments.suite ? "suite" : "safe");
  json.Close('}');
  console.out << json.Text();
}

int SimplifyAsSuite(const SimplifyArguments& arguments, Console& console) {
  CString text = CString::FromUtf8(arguments.formula);
  COptimizeExpression simplifier;
  TakeValues(arguments.values, simplifier);
  try {
    if (simplifier.OptimizateExper(text, FlagsOf(arguments.rules))) {
      Print(arguments, text, console);
      return kFine;
    }
  } catch (CException* e) {
    // The suite's rules raise for the one form of call that they cannot take apart.
    e->Delete();
    console.err << "lorv: " << Say("an iif inside another call has not three arguments") << "\n";
    return kResultFailed;
  }
  // False without an exception: the text was empty, or a rule met a division by zero.
  console.err << "lorv: " << (text.IsEmpty() ? Say("the formula is empty") : Say("the formula divides by 0"))
              << "\n";
  return kResultFailed;
}

int Simplify(const SimplifyArguments& arguments, Console& console) {
  if (arguments.suite) return SimplifyAsSuite(arguments, console);
  const auto sign = arguments.any_zero ? ZeroSign::kIgnored : ZeroSign::kKept;
  Print(arguments, SimplifySafely(CString::FromUtf8(arguments.formula), sign), console);
  return kFine;
}

}  // namespace

Work DeclareSimplify(VerbSyntax& syntax) {
  auto arguments = std::make_shared<SimplifyArguments>();
  syntax.Value("FORMULA", arguments->formula, "the formula").Required();
  Argument rules =
      syntax.Value("--rules", arguments->rules, "which rules, with commas between; all if not given");
  rules.DividedBy(',').OneOf({"zero", "max", "min", "iif"});
  Argument values = syntax.Value("--value", arguments->values, "NAME=NUMBER, known when calls are folded");
  values.OneValueEach();
  Argument suite =
      syntax.Flag("--suite", arguments->suite, "by the suite's own rules, which may change the value");
  rules.Needs(suite);
  // The safe way gives what holds for any values, so it takes none.
  values.Needs(suite);
  syntax.Flag("--any-zero", arguments->any_zero, "0 and -0 count as the same").Excludes(suite);
  syntax.Flag("-j,--json", arguments->json, "print the formula and the shorter one as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Simplify(*arguments, console); };
}

}  // namespace lorv::tool
