#include <memory>
#include <ostream>

#include "TEXPRESSCAL/calculator.h"
#include "TEXPRESSCAL/formula_cleanup.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The verb `clean`: the library's operations on formulas that were built by substitution, each by itself.
// Programmers of the suite try here what a text becomes; the operations change the values of other formulas.

namespace lorv::tool {
namespace {

struct CleanArguments {
  std::string operation;
  std::string text;
  std::string values;
  bool json = false;
};

constexpr const char* kHelp =
    "Operations, by their short name or by that of the library's function:\n"
    "  numbers  OptimizeNumExpr     cut zeros behind a sign or a name\n"
    "  terms    OptimizeExpr        cut every zero no digit follows, with its sign and factor, then clear up "
    "signs\n"
    "  signs    MoveConnSymbol      clear up doubled signs and empty brackets\n"
    "  params   PrepareParamsValue  work each formula of a list NAME:FORMULA;... to a number\n"
    "They serve texts that were built by substitution and parse nothing: \"10+a\" becomes \"1+a\" by terms.\n"
    "\n"
    "Examples:\n"
    "  lorv clean numbers \"a+0+b\"                     a+b\n"
    "  lorv clean terms \"a*0+b\"                       a+b\n"
    "  lorv clean signs \"a*+b\"                        a+b\n"
    "  lorv clean params \"a:1+1;b:H*2\" --values H:3    a:2;b:6";

CString NumbersCleaned(const CString& text) {
  // One unit of room for the "0" that comes for a text of which nothing is left.
  CString cleaned = text;
  CAdExpCalculate().OptimizeNumExpr(cleaned.GetBuffer(text.GetLength() + 1));
  cleaned.ReleaseBuffer();
  return cleaned;
}

int Clean(const CleanArguments& arguments, Console& console) {
  CString text = CString::FromUtf8(arguments.text);
  const std::string& operation = arguments.operation;
  CAdExpCalculate calculator;
  // Only `params` evaluates formulas; the others look at characters.
  calculator.SetVarValue(CString::FromUtf8(arguments.values));
  if (operation == "numbers" || operation == "OptimizeNumExpr") {
    text = NumbersCleaned(text);
  } else if (operation == "terms" || operation == "OptimizeExpr") {
    calculator.OptimizeExpr(text);
  } else if (operation == "signs" || operation == "MoveConnSymbol") {
    ClearUpSigns(text);
  } else if (!calculator.PrepareParamsValue(text)) {
    // It has no other failure: a formula of the list that is wrong counts 0.
    throw BadInput(Say("the list of parameters is empty"));
  }
  if (!arguments.json) {
    console.out << text.ToUtf8() << "\n";
    return kFine;
  }
  JsonText json;
  json.Open('{');
  json.Key("operation").String(operation);
  json.Key("text").String(arguments.text);
  json.Key("result").String(text.ToUtf8());
  json.Close('}');
  console.out << json.Text();
  return kFine;
}

}  // namespace

Work DeclareClean(VerbSyntax& syntax) {
  auto arguments = std::make_shared<CleanArguments>();
  syntax.Value("OPERATION", arguments->operation, "what to do")
      .Required()
      .OneOf({"numbers", "terms", "signs", "params", "OptimizeNumExpr", "OptimizeExpr", "MoveConnSymbol",
              "PrepareParamsValue"});
  syntax.Value("TEXT", arguments->text, "the formula, or the list of parameters").Required();
  syntax.Value("--values", arguments->values, "for params: values of names, NAME:NUMBER;...");
  syntax.Flag("-j,--json", arguments->json, "print the text and the result as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Clean(*arguments, console); };
}

}  // namespace lorv::tool
