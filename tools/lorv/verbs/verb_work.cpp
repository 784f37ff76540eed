#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <ostream>

#include "framework/text/number_text.h"
#include "tools/lorv/takeoff/bill.h"
#include "tools/lorv/takeoff/comparison.h"
#include "tools/lorv/takeoff/component_worker.h"
#include "tools/lorv/takeoff/result_file.h"
#include "tools/lorv/text/progress_bar.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {

Work DeclareWork(CLI::App& app);

namespace {

struct WorkArguments {
  std::string components;
  std::string rules;
  std::string table;
  std::string bill;
  std::string encoding = "auto";
  double tolerance = 1;  // per cent
  bool compare = false;
  bool quiet = false;
  bool json = false;
  bool mark = false;
  bool time = false;
};

constexpr const char* kHelp =
    "The components file holds one building component a row: class, name, storey and its dimensions. The\n"
    "rules file holds one quantity a row: for which classes, its name, unit and formula. Both are tables "
    "that\n"
    "a spreadsheet program or a text editor writes (CSV; UTF-8, GBK or UTF-16), with titles in English or\n"
    "Chinese. docs/formats/ has their manuals.\n"
    "\n"
    "A wrong formula or a missing value is told once a rule, with a mark under the place, and stops nothing\n"
    "else; the exit code is then 1.\n"
    "\n"
    "Examples:\n"
    "  lorv work house.csv --rules rules.csv\n"
    "  lorv work house.csv --rules rules.csv --out quantities.csv --bill bill.csv --mark\n"
    "  lorv work model.csv --rules rules.csv --compare --tolerance 0.5\n"
    "  cat house.csv | lorv work - --rules rules.csv --json";

// One run from the files to the bill.
class TakeOff {
 public:
  TakeOff(const WorkArguments& arguments, Console& console)
      : arguments_(arguments),
        console_(console),
        rules_(ReadRulesFile()),
        bytes_(arguments.components, console.in),
        file_(bytes_, EncodingByName(arguments.encoding)),
        planner_(rules_, file_),
        problems_(rules_),
        quantities_(rules_),
        bill_(quantities_),
        comparison_(planner_, arguments.tolerance / 100),
        worker_(planner_, file_, problems_) {}

  int Run();

 private:
  RuleSet ReadRulesFile() {
    InputBytes bytes(arguments_.rules, console_.in);
    return ReadRules(bytes, EncodingByName(arguments_.encoding));
  }
  void WorkAll();
  void AddToBill(const std::vector<Result>& results);
  void WriteBill() const;
  void Print() const;
  void PrintRoundings() const;
  void PrintTime() const;
  void PrintJson() const;

  const WorkArguments& arguments_;
  Console& console_;
  RuleSet rules_;
  InputBytes bytes_;
  ComponentsFile file_;
  Planner planner_;
  Problems problems_;
  Quantities quantities_;
  Bill bill_;
  Comparison comparison_;
  ComponentWorker worker_;
  long long components_ = 0;
  long long without_rule_ = 0;
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

void TakeOff::AddToBill(const std::vector<Result>& results) {
  for (const Result& result : results) {
    const int quantity = result.state == Result::kWorked ? quantities_.Of(result.rule) : -1;
    if (quantity < 0) continue;
    bill_.Add(file_.Of(kClassOf), file_.Of(kStoreyOf), quantity, result.value, file_.Count());
  }
}

void TakeOff::WorkAll() {
  std::optional<ResultFile> table;
  if (!arguments_.table.empty()) {
    table.emplace(arguments_.table, arguments_.mark, file_, quantities_, rules_, console_.out);
  }
  ProgressBar bar(console_, bytes_.Size());
  while (file_.Next()) {
    const std::vector<Result>& results = worker_.Work();
    ++components_;
    without_rule_ += results.empty();
    AddToBill(results);
    if (table) table->Add(file_, results);
    if (arguments_.compare) comparison_.Add(file_, results);
    bar.Show(bytes_.Done());
  }
  // The bill first: if it cannot be written, the table is not left behind alone.
  WriteBill();
  if (table) table->Commit();
}

void TakeOff::WriteBill() const {
  if (arguments_.bill.empty()) return;
  OutputFile file(arguments_.bill, console_.out);
  if (arguments_.mark) file.Write("\xEF\xBB\xBF");
  bill_.Write(file);
  file.Commit();
}

void TakeOff::PrintRoundings() const {
  for (std::size_t i = 0; i < planner_.Dimensions().size(); ++i) {
    const Rounding& rounding = worker_.Roundings()[i];
    if (rounding.values == 0) continue;
    console_.err
        << "lorv: note: " << rounding.values << " values of \"" << planner_.Dimensions()[i].name
        << "\" have more than three decimals and were worked with three, which changes them by up to "
        << RealToText(rounding.largest * 100, 'g', 2)
        << " %; a row of kind \"column\" with a factor (1000: millimetres) keeps them\n";
  }
}

void TakeOff::Print() const {
  const bool piped = arguments_.table == "-" || arguments_.bill == "-";
  std::ostream& out = piped ? console_.err : console_.out;
  if (!arguments_.quiet) {
    bill_.Print(out);
    out << "\n" << components_ << (components_ == 1 ? " component" : " components");
    if (without_rule_ > 0) out << ", " << without_rule_ << " of a class that no rule is for";
    out << "\n";
  }
  if (arguments_.compare) {
    if (!arguments_.quiet) out << "\n";
    comparison_.Print(out);
  }
}

void TakeOff::PrintJson() const {
  JsonText json;
  json.Open('{');
  json.Key("components").Number(components_);
  json.Key("without_rule").Number(without_rule_);
  bill_.Write(json);
  problems_.Write(json);
  if (arguments_.compare) comparison_.Write(json);
  json.Close('}');
  console_.out << json.Text();
}

void TakeOff::PrintTime() const {
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin_;
  const double seconds = std::max(taken.count(), 1e-9);
  console_.err << "lorv: " << components_ << (components_ == 1 ? " row" : " rows") << " in "
               << RealToText(seconds, 'f', 3) << " s, "
               << RealToText(static_cast<double>(components_) / seconds, 'f', 0) << " rows a second\n";
}

int TakeOff::Run() {
  WorkAll();
  if (arguments_.time) PrintTime();
  if (arguments_.json) {
    PrintJson();
  } else {
    Print();
    console_.out.flush();
    problems_.Print(console_.err, console_.columns);
    PrintRoundings();
  }
  return problems_.IsEmpty() ? kFine : kResultFailed;
}

// An output that is an input would be replaced while it is read, or lose the rules.
void CheckOutputs(const WorkArguments& arguments) {
  const auto same = [](const std::string& a, const std::string& b) {
    std::error_code none;
    const auto path = [](const std::string& utf8) {
      return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
    };
    return !a.empty() && !b.empty() && (a == b || std::filesystem::equivalent(path(a), path(b), none));
  };
  for (const std::string& output : {arguments.table, arguments.bill}) {
    if (same(output, arguments.components) || same(output, arguments.rules)) {
      throw BadInput(output + " is read: the output needs a name of its own");
    }
  }
  // What is printed and what a program reads cannot be told apart on standard output.
  const bool piped = arguments.table == "-" || arguments.bill == "-";
  if (piped && arguments.json) throw BadInput("--json and a table cannot both go to standard output");
  if (same(arguments.table, arguments.bill)) throw BadInput("--out and --bill name one file");
  if (arguments.components == "-" && arguments.rules == "-") {
    throw BadInput("components and rules cannot both come from standard input");
  }
  if (!(arguments.tolerance >= 0)) throw BadInput("--tolerance is a share in per cent, from 0 up");
}

}  // namespace

Work DeclareWork(CLI::App& app) {
  auto arguments = std::make_shared<WorkArguments>();
  app.add_option("COMPONENTS", arguments->components, "table of components; - reads standard input")
      ->required();
  app.add_option("--rules", arguments->rules, "table of rules")->required();
  app.add_option("--out", arguments->table,
                 "write the full table: components x quantities (CSV); - is standard output");
  app.add_option("--bill", arguments->bill, "write the bill as a table (CSV); - is standard output");
  app.add_flag("--mark", arguments->mark, "begin files with a byte order mark, as spreadsheets want it");
  app.add_flag("--compare", arguments->compare, "count how many agree with the columns named in \"compare\"");
  app.add_option("--tolerance", arguments->tolerance,
                 "share in per cent within which they agree; 1 if not given");
  app.add_option("--encoding", arguments->encoding, "of both inputs: auto, utf-8, gbk, utf-16le, utf-16be");
  app.add_flag("--quiet", arguments->quiet, "do not print the bill");
  app.add_flag("--time", arguments->time, "tell how many rows a second were read, worked and written");
  app.add_flag("--json", arguments->json, "print bill, problems and comparison as JSON");
  app.footer(kHelp);
  return [arguments](Console& console) {
    CheckOutputs(*arguments);
    // Standard output is the table's alone.
    arguments->quiet = arguments->quiet || arguments->table == "-" || arguments->bill == "-";
    return TakeOff(*arguments, console).Run();
  };
}

}  // namespace lorv::tool
