#include "tools/lorv/takeoff/take_off.h"

#include <algorithm>
#include <ostream>

#include "framework/text/number_text.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/screen/progress_bar.h"
#include "tools/lorv/takeoff/output/bill_output.h"

// The verb `work` itself: reads rules and components, evaluates one component after the other into the bill,
// and reports what it found. Of a component nothing is kept but what the bill, the findings and the
// comparison add up: models have millions of rows.

namespace lorv::tool {

// Each member leans on those declared above it: the rules name columns, the planner binds them to the file,
// and all else asks the planner.
TakeOff::TakeOff(const TakeOffRequest& request, Console& console)
    : request_(request),
      console_(console),
      rules_(ReadRulesFile()),
      bytes_(request.components, console.in),
      file_(bytes_, EncodingByName(request.encoding)),
      planner_(rules_, file_, {DigitsAsked(), request.compare}),
      problems_(rules_),
      coverage_(planner_),
      quantities_(rules_),
      bill_(quantities_, KeysAsked()),
      comparison_(planner_, request.tolerance / 100),
      precision_(quantities_),
      units_(planner_),
      evaluator_(planner_, file_, problems_, coverage_, DigitsAsked()) {
  unread_sheets_ += bytes_.UnreadSheets();
  // Bound last, as its words are columns and constants of the planner.
  if (!request.where.empty()) filter_.emplace(request.where, planner_, file_);
}

RuleSet TakeOff::ReadRulesFile() {
  InputBytes bytes(request_.rules, console_.in);
  unread_sheets_ += bytes.UnreadSheets();
  return ReadRules(bytes, EncodingByName(request_.encoding));
}

// Class and storey if nothing is asked for; a known column by any of its titles, any other by its own. A key
// that the user asked for has to be there; one of the two by default may lack, as many models name no storey.
std::vector<BillKey> TakeOff::KeysAsked() {
  std::vector<BillKey> keys;
  std::string list = request_.by.empty() ? "class,storey" : request_.by;
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::string asked = list.substr(0, comma);
    list.erase(0, comma + 1);
    const int role = RoleOf(ComponentColumns(), asked);
    const auto column = role >= 0 ? file_.Column(static_cast<ComponentRole>(role)) : file_.Column(asked);
    // A column behind the last one is an empty cell: a file without storeys has one that has no name.
    if (!column && !request_.by.empty()) {
      throw BadInput(Say("--by: {} has no column \"{}\"", {file_.Name(), asked}));
    }
    key_columns_.push_back(column.value_or(file_.Titles().size()));
    const bool is_known = role >= 0;
    keys.push_back(
        {is_known ? std::string(ComponentColumns()[static_cast<std::size_t>(role)].names[0]) : asked,
         role == kStoreyOf});
  }
  if (keys.empty()) throw BadInput(Say("--by names no column"));
  return keys;
}

void TakeOff::AddToBill(const std::vector<Result>& results) {
  std::optional<std::size_t> group;
  for (const Result& result : results) {
    // Steps are evaluated for other rows and are no lines of the bill.
    const int quantity = result.state == Result::kEvaluated ? quantities_.Of(result.rule) : -1;
    if (quantity < 0) continue;
    // Only now: a component that adds nothing makes no group, and no empty line.
    if (!group) {
      std::vector<std::string_view> keys;
      for (const std::size_t column : key_columns_) keys.push_back(file_.Row()[column]);
      group = bill_.GroupOf(keys);
    }
    bill_.Add(*group, static_cast<std::size_t>(quantity), result.value, file_.Count());
  }
}

void TakeOff::Explain(const std::vector<Result>& results) {
  for (std::size_t i = 0; i < results.size(); ++i) {
    const int quantity = results[i].state == Result::kEvaluated ? quantities_.Of(results[i].rule) : -1;
    if (quantity < 0) continue;
    const Quantity& of = quantities_.List()[static_cast<std::size_t>(quantity)];
    console_.out << Printable(PlaceOfComponent(file_)) << ": " << Printable(of.name) << " = "
                 << Printable(evaluator_.TextWithValues(i).ToUtf8()) << " = " << PlainReal(results[i].value)
                 << (of.unit.empty() ? "" : " " + of.unit) << "\n";
  }
}

void TakeOff::EvaluateOne(std::optional<ResultFile>& table) {
  if (filter_ && !filter_->Passes()) {
    // It counts nowhere else: bill, findings and comparison are of what was asked for.
    ++left_out_;
    evaluator_.PassOver();
    return;
  }
  const std::vector<Result>& results = evaluator_.Evaluate();
  ++components_;
  if (results.empty()) {
    ++without_rule_;
    coverage_.AddClassWithoutRule(std::string(file_.Of(kClassOf)));
  }
  units_.Look(file_);
  AddToBill(results);
  if (table) table->Add(file_, results, evaluator_);
  // A table has the working in columns of its own, and JSON text holds nothing that is no JSON.
  if (request_.explain && !table && !request_.json) Explain(results);
  if (request_.compare) comparison_.Add(file_, results);
  if (request_.suite_values) precision_.Add(results, file_.Count());
}

void TakeOff::EvaluateAll() {
  std::optional<ResultFile> table;
  if (!request_.table.empty()) {
    table.emplace(request_.table, ResultLayout{request_.mark, request_.explain}, file_, quantities_, rules_,
                  console_);
  }
  {
    // Gone before the files are written: a workbook has a bar of its own.
    ProgressBar bar(console_, bytes_.Size());
    while (file_.Next()) {
      EvaluateOne(table);
      bar.Show(bytes_.Done());
    }
  }
  CheckFormulas();
  CheckRatios();
  // The bill first: if it cannot be written, the table is not left behind alone.
  WriteBillFile();
  if (table) table->Commit(bill_);
}

// Without a component: a formula is wrong, or doubtful, by its text alone.
void TakeOff::CheckFormula(std::size_t rule, RulePart part, const BoundFormula& formula) {
  if (formula.FaultOfText()) problems_.Add(rule, part, *formula.FaultOfText(), "");
  for (const Fault& doubt : formula.Doubts()) problems_.Add(rule, part, doubt, "");
}

// As they are bound for the classes that came; those that no class had a use for are bound alone.
void TakeOff::CheckFormulas() {
  for (const auto& [rule, doubt] : planner_.ConstantDoubts())
    problems_.Add(rule, RulePart::kFormula, doubt, "");
  std::vector<bool> is_bound(rules_.rules.size());
  const auto check = [&](const auto& bound) {
    is_bound[bound.rule] = true;
    CheckFormula(bound.rule, RulePart::kFormula, bound.formula);
    if (bound.condition) CheckFormula(bound.rule, RulePart::kCondition, *bound.condition);
  };
  for (const Plan* plan : planner_.Plans()) {
    for (const BoundRule& bound : plan->rules) check(bound);
    for (const BoundDefault& bound : plan->defaults) check(bound);
  }
  // Rules of classes that this model lacks may meet them in the next one.
  for (std::size_t i = 0; i < rules_.rules.size(); ++i) {
    const RuleKind kind = rules_.rules[i].kind;
    const bool has_formula =
        kind == RuleKind::kQuantity || kind == RuleKind::kStep || kind == RuleKind::kDefault;
    if (has_formula && !is_bound[i]) check(planner_.BindAlone(i));
  }
}

// Ratios are calculated of totals: the bill has to be made before it is known what is wrong with them.
void TakeOff::CheckRatios() {
  // The rows themselves are made again where they are written.
  bill_.Rows();
  for (const auto& [rule, doubt] : quantities_.RatioDoubts())
    problems_.Add(rule, RulePart::kFormula, doubt, "");
}

void TakeOff::WriteBillFile() const {
  if (request_.bill.empty()) return;
  if (NamesWorkbook(request_.bill)) return WriteBillWorkbook(bill_, request_.bill, console_);
  OutputFile file(request_.bill, console_.out);
  // Spreadsheet programs take a CSV without this mark for one of the system's code page.
  if (request_.mark) file.Write("\xEF\xBB\xBF");
  WriteBill(bill_, file);
  file.Commit();
}

void TakeOff::Print() const {
  // Whoever reads the piped table reads a table and nothing else.
  const bool piped = request_.table == "-" || request_.bill == "-";
  std::ostream& out = piped ? console_.err : console_.out;
  if (!request_.quiet) {
    if (request_.explain && request_.table.empty() && components_ > 0) out << "\n";
    PrintBill(bill_, out);
    out << "\n"
        << (components_ == 1 ? Say("1 component") : Say("{} components", {std::to_string(components_)}));
    if (left_out_ > 0) out << Say(", {} left out by --where", {std::to_string(left_out_)});
    if (without_rule_ > 0) out << Say(", {} of a class that no rule is for", {std::to_string(without_rule_)});
    out << "\n";
  }
  if (request_.compare) {
    if (!request_.quiet) out << "\n";
    comparison_.Print(out);
  }
}

void TakeOff::PrintNotes() const {
  std::ostream& err = console_.err;
  if (unread_sheets_ > 0) {
    err << "lorv: "
        << Say("note: of the workbooks only the first sheets are read; {} more hold something",
               {std::to_string(unread_sheets_)})
        << "\n";
  }
  problems_.Print(err, console_.columns);
  coverage_.Print(err);
  units_.Print(err);
  if (request_.suite_values) precision_.Print(err);
  if (filter_) filter_->Print(err, console_.columns);
}

void TakeOff::PrintJson() const {
  JsonText json;
  json.Open('{');
  json.Key("components").Number(components_);
  json.Key("without_rule").Number(without_rule_);
  json.Key("left_out").Number(left_out_);
  if (unread_sheets_ > 0) json.Key("unread_sheets").Number(unread_sheets_);
  json.Key("digits").String(request_.suite_values ? "suite" : "all");
  WriteBill(bill_, json);
  problems_.Write(json);
  coverage_.Write(json);
  units_.Write(json);
  precision_.Write(json);
  if (filter_) filter_->Write(json);
  if (request_.compare) comparison_.Write(json);
  json.Close('}');
  console_.out << json.Text();
}

void TakeOff::PrintTime() const {
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin_;
  const double seconds = std::max(taken.count(), 1e-9);
  console_.err << "lorv: "
               << Say("{} rows in {} s, {} rows a second",
                      {std::to_string(components_), RealToText(seconds, 'f', 3),
                       RealToText(static_cast<double>(components_) / seconds, 'f', 0)})
               << "\n";
}

int TakeOff::ExitCodeOf() const {
  const bool doubtful = !problems_.IsEmpty() || !coverage_.IsComplete() || !units_.IsFine() ||
                        (filter_ && !filter_->IsFine()) || unread_sheets_ > 0;
  // What failed is missing in the totals, and coarse totals are not those of the rules: neither passes for
  // fine, with or without --strict.
  if (problems_.HasFaults() || precision_.IsCoarse()) return kResultFailed;
  return request_.strict && doubtful ? kResultFailed : kFine;
}

int TakeOff::Run() {
  EvaluateAll();
  if (request_.time) PrintTime();
  if (request_.json) {
    PrintJson();
  } else {
    Print();
    // On a terminal both streams meet: the bill stands above the notes on it.
    console_.out.flush();
    PrintNotes();
  }
  return ExitCodeOf();
}

}  // namespace lorv::tool
