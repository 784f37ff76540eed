#include <memory>
#include <ostream>
#include <vector>

#include "comm/AdLorvComm.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The verb `name`: the suite's rules for names of components. Its findings are in the suite's words, as users
// of the suite know them.

namespace lorv::tool {
namespace {

struct NameArguments {
  std::string operation;
  std::string text;
  std::vector<std::string> names;
  int limit = 21;
  bool blanks = false;
  bool number = false;
  bool json = false;
};

constexpr const char* kHelp =
    "Operations:\n"
    "  check  say whether TEXT may be a name: it holds none of ' \\ \" % and, without --blanks, no blank\n"
    "  clean  take \\ ' \" % and / out of TEXT (a blank stays, and takes every ' along)\n"
    "  free   the first free name made of the head TEXT and a number, NAMES being taken\n"
    "\n"
    "Examples:\n"
    "  lorv name check \"KL 1\"                 包含空格\n"
    "  lorv name clean \"KL/1\"                 KL1\n"
    "  lorv name free KL KL KL1 KL2            KL3\n"
    "\n"
    "Exit code 1: check found something; the findings are the suite's own words.";

void Print(const NameArguments& arguments, const char* key, const std::string& text, Console& console) {
  if (!arguments.json) {
    console.out << text << "\n";
    return;
  }
  JsonText json;
  json.Open('{');
  json.Key("operation").String(arguments.operation);
  json.Key("text").String(arguments.text);
  json.Key(key).String(text);
  json.Close('}');
  console.out << json.Text();
}

int Check(const NameArguments& arguments, Console& console) {
  const CString text = CString::FromUtf8(arguments.text);
  // The library's limit is the first length that is refused, and so is the option's.
  const auto finding = CAdLorvComm::IsValidStr(text, arguments.limit, arguments.blanks);
  Print(arguments, "finding", CString(CAdLorvComm::GetErrorInfo(finding)).ToUtf8(), console);
  return finding == CAdLorvComm::emStrValid ? kFine : kResultFailed;
}

CString FreeName(const NameArguments& arguments) {
  CStringArray names;
  for (const std::string& name : arguments.names) names.Add(CString::FromUtf8(name));
  CString result;
  // Its result is true always: there is a free name for any head.
  CAdLorvComm::GetValidNewNamebyHead(CString::FromUtf8(arguments.text), names, result, arguments.number);
  return result;
}

int Name(const NameArguments& arguments, Console& console) {
  // Two words where one was meant are most often a name with a blank, typed without quotes.
  if (arguments.operation != "free" && !arguments.names.empty()) {
    throw BadInput(
        Say("{} takes one text; \"{}\" is one too many", {arguments.operation, arguments.names[0]}));
  }
  if (arguments.operation == "check") return Check(arguments, console);
  CString text = CString::FromUtf8(arguments.text);
  if (arguments.operation == "clean") {
    CAdLorvComm::RemoveInvaildChar(text);
  } else {
    text = FreeName(arguments);
  }
  Print(arguments, "result", text.ToUtf8(), console);
  return kFine;
}

}  // namespace

Work DeclareName(VerbSyntax& syntax) {
  auto arguments = std::make_shared<NameArguments>();
  syntax.Value("OPERATION", arguments->operation, "what to do").Required().OneOf({"check", "clean", "free"});
  syntax.Value("TEXT", arguments->text, "the name, or the head of a new one").Required();
  syntax.Value("NAMES", arguments->names, "for free: the names that are taken");
  syntax.Value("--limit", arguments->limit, "for check: so many characters are too long; 21 if not given");
  syntax.Flag("--blanks", arguments->blanks, "for check: blanks are allowed");
  syntax.Flag("--number", arguments->number, "for free: never the head alone");
  syntax.Flag("-j,--json", arguments->json, "print the text and the answer as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Name(*arguments, console); };
}

}  // namespace lorv::tool
