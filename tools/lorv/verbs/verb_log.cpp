#include <istream>
#include <memory>
#include <ostream>
#include <vector>

#include "report/print_error_log.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The verb `log`: writes lines to a text file in the way of the suite's failure reports, for scripts whose
// findings a user is to read in the suite's viewer.

namespace lorv::tool {
namespace {

struct LogArguments {
  std::string folder;
  std::string file;
  std::vector<std::string> lines;
  bool open = false;
  bool json = false;
};

constexpr const char* kHelp =
    "Writes LINES, or without any the lines of the input, to FILE in FOLDER, in the narrow code page of the "
    "suite.\n"
    "FOLDER is made if only its last level is missing; a file that stands there is replaced.\n"
    "\n"
    "Examples:\n"
    "  lorv log checks today.txt \"KL1: no section\" \"Z3: no height\"\n"
    "  lorv check \"1+\" 2>&1 | lorv log checks today.txt --open\n"
    "\n"
    "Exit code 2: the folder cannot be made, the file cannot be written, or there are no lines.";

int WriteLog(const LogArguments& arguments, Console& console) {
  CPrintErrorLog log;
  for (const std::string& line : arguments.lines) log.AddOneString(CString::FromUtf8(line));
  if (arguments.lines.empty()) {
    for (std::string line; std::getline(console.in, line);) log.AddOneString(CString::FromUtf8(line));
  }
  // Asked before: without lines the library fails as it does for a file that cannot be written, once it has
  // made the folder.
  if (log.Lines().IsEmpty()) throw BadInput(Say("there are no lines to write"));
  const CString folder = CString::FromUtf8(arguments.folder);
  // The lines stay (`false`), as the answer below counts them.
  if (!log.OutputErrorLog(folder, CString::FromUtf8(arguments.file), false, arguments.open)) {
    throw BadInput(Say(arguments.open ? "cannot write \"{}\" in \"{}\", or no viewer starts"
                                      : "cannot write \"{}\" in \"{}\"",
                       {arguments.file, arguments.folder}));
  }
  if (!arguments.json) return kFine;
  JsonText json;
  json.Open('{');
  json.Key("folder").String(arguments.folder);
  json.Key("file").String(arguments.file);
  json.Key("lines").Number(static_cast<long long>(log.Lines().GetSize()));
  json.Close('}');
  console.out << json.Text();
  return kFine;
}

}  // namespace

Work DeclareLog(VerbSyntax& syntax) {
  auto arguments = std::make_shared<LogArguments>();
  syntax.Value("FOLDER", arguments->folder, "where to").Required();
  syntax.Value("FILE", arguments->file, "the file's name").Required();
  syntax.Value("LINES", arguments->lines, "the lines");
  syntax.Flag("--open", arguments->open, "open the file in the text viewer");
  syntax.Flag("-j,--json", arguments->json, "print what was written as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return WriteLog(*arguments, console); };
}

}  // namespace lorv::tool
