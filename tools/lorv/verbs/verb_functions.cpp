#include <memory>
#include <ostream>

#include "TEXPRESSCAL/express.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/function_words_table.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/column_text.h"
#include "tools/lorv/text/json_text.h"

// The verb `functions`: the functions that formulas may call, in Chinese in the words that the suite shows.
// The list is the library's own, so it never names a function that is not there.

namespace lorv::tool {
namespace {

struct FunctionsArguments {
  std::string name;
  bool json = false;
};

constexpr const char* kHelp =
    "In Chinese the descriptions are those that the suite shows to its users.\n"
    "\n"
    "Examples:\n"
    "  lorv functions\n"
    "  lorv functions iif\n"
    "  lorv functions --json";

// The suite's text where there is no other: a new function of the library is listed in any case.
std::string DescriptionOf(const CDtaFunction& function) {
  const std::string_view english =
      SpokenLanguage() == Language::kEnglish ? EnglishOfFunction(CString(function.pszName).ToUtf8()) : "";
  return english.empty() ? CString(function.pszDesc).ToUtf8() : std::string(english);
}

int List(const FunctionsArguments& arguments, Console& console) {
  const CExpression expression;
  const CExpression::FunctionArray& all = expression.GetFuncDta();
  const CString wanted = CString::FromUtf8(arguments.name);
  TextTable table({{Say("Function")}, {Say("Description")}});
  JsonText json;
  json.Open('[');
  bool any = false;
  for (const CDtaFunction& function : all) {
    const CString name = function.pszName;
    // As in formulas, letter case does not count.
    if (!wanted.IsEmpty() && name.CompareNoCase(wanted) != 0) continue;
    any = true;
    const std::string description = DescriptionOf(function);
    table.Add({name.ToUtf8(), description});
    json.Open('{');
    json.Key("name").String(name.ToUtf8());
    json.Key("description").String(description);
    json.Close('}');
  }
  json.Close(']');
  if (!any) {
    // Diagnosed as if it were a formula, which suggests a known name for one that is misspelt.
    const CString nearest = DiagnoseFormula(wanted, {}, {}).suggestion;
    throw BadInput(Say("there is no function \"{}\"", {arguments.name}) +
                   (nearest.IsEmpty() ? Say("; `lorv functions` lists them")
                                      : Say("; did you mean {}?", {nearest.ToUtf8()})));
  }
  if (arguments.json) {
    console.out << json.Text();
  } else {
    table.Print(console.out);
  }
  return kFine;
}

}  // namespace

Work DeclareFunctions(VerbSyntax& syntax) {
  auto arguments = std::make_shared<FunctionsArguments>();
  syntax.Value("NAME", arguments->name, "one function only");
  syntax.Flag("-j,--json", arguments->json, "print the list as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return List(*arguments, console); };
}

}  // namespace lorv::tool
