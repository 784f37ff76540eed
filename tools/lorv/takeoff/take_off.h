#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/takeoff/evaluate/comparison.h"
#include "tools/lorv/takeoff/evaluate/component_evaluator.h"
#include "tools/lorv/takeoff/evaluate/precision.h"
#include "tools/lorv/takeoff/findings/unit_check.h"
#include "tools/lorv/takeoff/output/bill.h"
#include "tools/lorv/takeoff/output/result_file.h"
#include "tools/lorv/takeoff/plan/row_filter.h"

namespace lorv::tool {

// What is asked of a take-off; empty texts ask for nothing.
struct TakeOffRequest {
  std::string components;
  std::string rules;
  std::string table;  // where the full table goes
  std::string bill;   // where the bill goes as a table
  std::string by;     // columns of the bill, with commas between
  std::string where;  // which components
  std::string encoding = "auto";
  double tolerance = 1;  // per cent
  bool suite_values = false;
  bool compare = false;
  bool explain = false;
  bool strict = false;
  bool quiet = false;
  bool json = false;
  bool mark = false;
  bool time = false;
};

// One run from the files to the bill: reads the rules and the components, evaluates, writes what was asked
// for, and prints the bill with notes on `console`. Throws BadInput for files and arguments that cannot be
// used. The request and the console must live as long. One thread calls; blocks of components are evaluated
// by several.
class TakeOff {
 public:
  TakeOff(const TakeOffRequest& request, Console& console);

  // The exit code.
  int Run();

 private:
  RuleSet ReadRulesFile();
  ValueDigits DigitsAsked() const { return request_.suite_values ? ValueDigits::kSuite : ValueDigits::kAll; }
  std::vector<BillKey> KeysAsked();

  void EvaluateAll();
  void EvaluateOne(std::optional<ResultFile>& table);
  void AddToBill(const std::vector<Result>& results);
  void Explain(const std::vector<Result>& results);
  // All formulas of the rules are looked at, whether or not a component needed them.
  void CheckFormulas();
  void CheckFormula(std::size_t rule, RulePart part, const BoundFormula& formula);
  void CheckRatios();
  void WriteBillFile() const;
  void Print() const;
  void PrintNotes() const;
  void PrintTime() const;
  void PrintJson() const;
  int ExitCodeOf() const;

  const TakeOffRequest& request_;
  Console& console_;
  long long unread_sheets_ = 0;  // of both workbooks
  RuleSet rules_;
  InputBytes bytes_;
  ComponentsFile file_;
  Planner planner_;
  Problems problems_;
  Coverage coverage_;
  Quantities quantities_;
  std::vector<std::size_t> key_columns_;  // of the components file
  Bill bill_;
  Comparison comparison_;
  Precision precision_;
  UnitCheck units_;
  ComponentEvaluator evaluator_;
  std::optional<RowFilter> filter_;
  long long components_ = 0;
  long long without_rule_ = 0;
  long long left_out_ = 0;  // by the filter
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

}  // namespace lorv::tool
