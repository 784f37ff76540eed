#include <filesystem>
#include <memory>

#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/takeoff/take_off.h"

// The verb `work`: its arguments, and which of them do not go together. The take-off itself is TakeOff, which
// relies on outputs being no inputs.

namespace lorv::tool {

Work DeclareWork(VerbSyntax& syntax);

namespace {

constexpr const char* kHelp =
    "The components file holds one building component a row: class, name, storey and its dimensions. The\n"
    "rules file holds one quantity a row: for which classes, its name, unit and formula. Both are tables "
    "that\n"
    "a spreadsheet program or a text editor writes (CSV in UTF-8, GBK or UTF-16, or the first sheet of an\n"
    ".xlsx workbook), with titles in English or Chinese. docs/formats/ has their manuals.\n"
    "\n"
    "A wrong formula or a missing value is reported once a rule, with a mark under the place, and stops "
    "nothing\n"
    "else; the exit code is then 1. What is doubtful or was left out (classes without a rule, rules that "
    "were\n"
    "never used, columns that the file lacks, units) is reported as well.\n"
    "\n"
    "Examples:\n"
    "  lorv work house.csv --rules rules.csv\n"
    "  lorv work house.csv --rules rules.csv --out quantities.csv --bill bill.csv --mark\n"
    "  lorv work house.csv -r rules.csv --by storey,class --where \"class=墙 && 宽>0.2\"\n"
    "  lorv work house.xlsx -r rules.xlsx --bill bill.xlsx\n"
    "  lorv work house.csv -r rules.csv --explain --out quantities.csv\n"
    "  lorv work model.csv --rules rules.csv --compare --tolerance 0.5\n"
    "  cat house.csv | lorv work - --rules rules.csv --json";

// An output that is an input would be replaced while it is read, or lose the rules.
void CheckOutputs(const TakeOffRequest& arguments) {
  const auto same = [](const std::string& a, const std::string& b) {
    std::error_code none;
    const auto path = [](const std::string& utf8) {
      return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
    };
    // Other spellings of a path and links are found for files that are there; of new ones the text alone
    // counts.
    return !a.empty() && !b.empty() && (a == b || std::filesystem::equivalent(path(a), path(b), none));
  };
  for (const std::string& output : {arguments.table, arguments.bill}) {
    if (output == "-") continue;  // one stream in and another out
    if (same(output, arguments.components) || same(output, arguments.rules)) {
      throw BadInput(Say("{} is read: the output needs a name of its own", {output}));
    }
  }
  // What is printed and what a program reads cannot be separated on standard output.
  const bool piped = arguments.table == "-" || arguments.bill == "-";
  if (piped && arguments.json) throw BadInput(Say("--json and a table cannot both go to standard output"));
  if (same(arguments.table, arguments.bill)) throw BadInput(Say("--out and --bill name one file"));
  if (arguments.components == "-" && arguments.rules == "-") {
    throw BadInput(Say("components and rules cannot both come from standard input"));
  }
  // Said so that what is no number is refused as well.
  if (!(arguments.tolerance >= 0)) throw BadInput(Say("--tolerance is a share in per cent, from 0 up"));
}

}  // namespace

Work DeclareWork(VerbSyntax& syntax) {
  auto arguments = std::make_shared<TakeOffRequest>();
  syntax.Value("COMPONENTS", arguments->components, "table of components; - reads standard input").Required();
  syntax.Value("-r,--rules", arguments->rules, "table of rules").Required();
  syntax.Value("-o,--out", arguments->table,
               "write the full table: components x quantities (CSV; .xlsx with the bill in front); - is "
               "standard output");
  syntax.Value("-b,--bill", arguments->bill,
               "write the bill as a table (CSV, or .xlsx with groups); - is standard output");
  syntax.Flag("--mark", arguments->mark, "begin files with a byte order mark, as spreadsheets want it");
  syntax.Value("-g,--by", arguments->by,
               "columns that part the bill, with commas between; class,storey if not given");
  syntax.Value("-w,--where", arguments->where, "only components for which this formula is greater than 0");
  syntax.Flag(
      "-e,--explain", arguments->explain,
      "show how each quantity was calculated: with --out as columns of the table, else before the bill");
  syntax.Flag("--strict", arguments->strict, "exit code 1 for whatever is doubtful or missing, too");
  syntax.Flag("--suite-values", arguments->suite_values,
              "values as the suite has them: three decimals, and a third for what is near one");
  syntax.Flag("--compare", arguments->compare, "count how many agree with the columns named in \"compare\"");
  syntax.Value("--tolerance", arguments->tolerance,
               "share in per cent within which they agree; 1 if not given");
  syntax.Value("--encoding", arguments->encoding, "of both inputs: auto, utf-8, gbk, utf-16le, utf-16be");
  syntax.Flag("-q,--quiet", arguments->quiet, "do not print the bill");
  syntax.Flag("--time", arguments->time, "show how many rows a second were read, calculated and written");
  syntax.Flag("-j,--json", arguments->json, "print bill, problems and comparison as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) {
    CheckOutputs(*arguments);
    // Standard output is the table's alone.
    arguments->quiet = arguments->quiet || arguments->table == "-" || arguments->bill == "-";
    return TakeOff(*arguments, console).Run();
  };
}

}  // namespace lorv::tool
