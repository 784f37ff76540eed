#include "tools/lorv/takeoff/evaluate/component_evaluator.h"

#include <limits>

#include "tools/lorv/formula/formula_digits.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/typed_number.h"

// Evaluates the rows of a plan for one component: which row of a name counts, what stands for a missing
// value, what goes wrong. It uses the block evaluated ahead where a formula needs nothing but numbers, and
// the formulas themselves for the rest. Values are looked up once for each component, as most names stand in
// several formulas.

namespace lorv::tool {
ComponentEvaluator::ComponentEvaluator(Planner& planner, const ComponentsFile& file, Problems& problems,
                                       Coverage& coverage, ValueDigits digits)
    : planner_(planner),
      file_(file),
      problems_(problems),
      coverage_(coverage),
      ready_(planner, file),
      digits_(digits) {}

const std::vector<Result>& ComponentEvaluator::Evaluate() {
  // Numbers the values that were looked up: those of the component before are never cleared, only
  // out of date.
  ++component_;
  if (file_.InBlock() == 0) ready_.Begin();
  plan_ = &ready_.PlanAtHand();
  // Plans are made as classes come, and may hold unknown names: dimensions without a column.
  values_.resize(planner_.Dimensions().size());
  if (digits_ == ValueDigits::kSuite) exact_values_.resize(values_.size());
  defaults_in_use_ = plan_->defaults.size();
  results_.assign(plan_->results, {});
  by_result_.assign(plan_->results, nullptr);
  for (BoundRule& rule : plan_->rules) EvaluateRule(rule);
  return results_;
}

void ComponentEvaluator::PassOver() {
  ++component_;
  // The block is made ready by whichever component opens it, evaluated or not.
  if (file_.InBlock() == 0) ready_.Begin();
}

void ComponentEvaluator::EvaluateRule(BoundRule& bound) {
  Result& result = results_[bound.result];
  // Counted before anything is decided: a rule of which the bill says nothing may have fitted and never
  // counted.
  coverage_.CountFit(bound.rule);
  // The first row of a name whose condition holds is the one that counts.
  // Once failed it stays so: a row below would hide that the one above should have counted.
  if (result.state != Result::kNone) return;
  coverage_.CountTried(bound.rule);
  const Rule& rule = planner_.Rules().rules[bound.rule];
  bool skip = false;
  // Reported even of a row that does not hold: with all digits it may be the one that counts.
  const std::optional<bool> holds = Holds(bound.condition, bound.rule, skip);
  if (holds && DecidesOtherwise(bound, *holds)) {
    result.decided_otherwise = true;
    result.rule = bound.rule;
  }
  if (holds && !*holds) return;
  coverage_.CountHeld(bound.rule);
  result.rule = bound.rule;
  if (!holds) {
    if (skip) return;
    result.state = Result::kFailed;
    coverage_.CountFailed(bound.rule);
    return;
  }
  const Outcome outcome = EvaluateFormula(bound.formula, bound.rule);
  // The name stays open, so a row of it further down may still give the quantity.
  if (outcome.state == Outcome::kMissing && rule.missing == Missing::kSkip) return;
  if (outcome.state != Outcome::kEvaluated) {
    Report(bound.rule, RulePart::kFormula, outcome.fault);
    result.state = Result::kFailed;
    coverage_.CountFailed(bound.rule);
    return;
  }
  coverage_.CountEvaluated(bound.rule);
  result.state = Result::kEvaluated;
  result.value = result.exact = outcome.value * rule.factor;
  by_result_[bound.result] = &bound;
  if (digits_ == ValueDigits::kSuite) EvaluateExactly(bound, result);
  ReportDoubts(bound.formula, bound.rule, RulePart::kFormula, outcome);
}

// What the suite's three decimals and thirds made of it is reported beside what there is with all digits.
void ComponentEvaluator::EvaluateExactly(BoundRule& bound, Result& result) {
  exact_pass_ = true;
  const Outcome outcome = EvaluateFormula(bound.formula, bound.rule);
  exact_pass_ = false;
  if (outcome.doubt) Report(bound.rule, RulePart::kFormula, *outcome.doubt);
  // With all digits it may fail where it does not otherwise, or another row count: nothing is the same then.
  const bool is_known = outcome.state == Outcome::kEvaluated && !result.decided_otherwise;
  result.exact = is_known ? outcome.value * planner_.Rules().rules[bound.rule].factor
                          : std::numeric_limits<double>::infinity();
}

// Whether a condition is decided otherwise with all digits of the values than by the suite's.
bool ComponentEvaluator::DecidesOtherwise(BoundRule& bound, bool holds) {
  if (digits_ != ValueDigits::kSuite || !bound.condition) return false;
  exact_pass_ = true;
  const Outcome outcome = EvaluateFormula(*bound.condition, bound.rule);
  exact_pass_ = false;
  return outcome.state == Outcome::kEvaluated && (outcome.value > 0) != holds;
}

void ComponentEvaluator::ReportDoubts(const BoundFormula& formula, std::size_t rule, RulePart part,
                                      const Outcome& outcome) {
  for (const Fault& doubt : formula.Doubts()) Report(rule, part, doubt);
  if (outcome.doubt) Report(rule, part, *outcome.doubt);
}

CString ComponentEvaluator::TextWithValues(std::size_t result) {
  const BoundRule* const bound = by_result_[result];
  if (bound == nullptr) return {};
  const Rule& rule = planner_.Rules().rules[bound->rule];
  std::optional<double> instead;
  // A missing value that counts as a number is shown as that number.
  if (rule.missing == Missing::kUseNumber) instead = rule.missing_value;
  CString text = bound->formula.TextWithValues(*this, instead);
  if (rule.factor == 1) return text;
  return _T("(") + text + _T(")*") + Digits(rule.factor);
}

std::optional<bool> ComponentEvaluator::Holds(std::optional<BoundFormula>& condition, std::size_t rule,
                                              bool& skip) {
  if (!condition) return true;
  const Outcome outcome = EvaluateFormula(*condition, rule);
  if (outcome.state == Outcome::kEvaluated) ReportDoubts(*condition, rule, RulePart::kCondition, outcome);
  // As the function IIF has it: greater than 0 is true, so a count or a difference is a condition, too.
  if (outcome.state == Outcome::kEvaluated) return outcome.value > 0;
  skip = outcome.state == Outcome::kMissing && planner_.Rules().rules[rule].missing == Missing::kSkip;
  if (!skip) Report(rule, RulePart::kCondition, outcome.fault);
  return std::nullopt;
}

Outcome ComponentEvaluator::EvaluateFormula(BoundFormula& formula, std::size_t rule) {
  const Rule& row = planner_.Rules().rules[rule];
  std::optional<double> instead;
  if (row.missing == Missing::kUseNumber) instead = row.missing_value;
  text_met_.reset();
  // Evaluated ahead are the values by the digits asked for; the second look needs its own.
  const double* const result = exact_pass_ ? nullptr : ready_.ResultOf(formula);
  if (result != nullptr) return {Outcome::kEvaluated, *result, {}};
  Outcome outcome = exact_pass_ ? formula.EvaluateExactly(*this, instead) : formula.Evaluate(*this, instead);
  // Words where a number belongs are no missing value: they are never passed over.
  if (!text_met_) return outcome;
  outcome.state = Outcome::kFaulty;
  const Dimension& dimension = planner_.Dimensions()[*text_met_];
  outcome.fault.message = Say("the value for \"{}\" is no number", {dimension.name});
  const std::string cell(file_.Row()[*dimension.column]);
  const auto place = std::to_string(file_.Row().Place(*dimension.column).character);
  outcome.fault.detail = Say("column {} holds \"{}\"", {place, cell}) + NumberHint(cell);
  return outcome;
}

// The second look with all digits reports nothing that the first one has not reported.
void ComponentEvaluator::Report(std::size_t rule, RulePart part, const Fault& fault) {
  if (exact_pass_) return;
  // What the cell holds describes the first component only. In the message it would make a problem
  // of each cell.
  const std::string detail = fault.detail.empty() ? "" : ": " + fault.detail;
  problems_.Add(rule, part, fault, PlaceOfComponent(file_) + detail);
}

std::optional<double> ComponentEvaluator::DimensionOf(std::size_t index) {
  Value& value = exact_pass_ ? exact_values_[index] : values_[index];
  if (value.component != component_) {
    const Value found = LookUp(index);
    // Inside a default fewer defaults are asked: what was found there may be less than there is. Words in a
    // cell are no less there than anywhere.
    if (defaults_in_use_ < plan_->defaults.size() && !found.is_text) return found.number;
    value = found;
  }
  if (value.is_text) text_met_ = index;
  return value.number;
}

ComponentEvaluator::Value ComponentEvaluator::LookUp(std::size_t index) {
  const Dimension& dimension = planner_.Dimensions()[index];
  Value value{component_, std::nullopt, false};
  const std::string_view cell = dimension.column ? file_.Row()[*dimension.column] : std::string_view();
  value.number = cell.empty() ? DefaultOf(index) : NumberOfCell(cell, dimension.factor, value.is_text);
  return value;
}

std::optional<double> ComponentEvaluator::DefaultValue(BoundDefault& bound) {
  // Without a value the default is no default, and the next one below is tried.
  const Outcome outcome = EvaluateFormula(bound.formula, bound.rule);
  if (outcome.state == Outcome::kFaulty) Report(bound.rule, RulePart::kFormula, outcome.fault);
  if (outcome.state != Outcome::kEvaluated) return std::nullopt;
  ReportDoubts(bound.formula, bound.rule, RulePart::kFormula, outcome);
  return outcome.value * planner_.Rules().rules[bound.rule].factor;
}

std::optional<double> ComponentEvaluator::DefaultOf(std::size_t index) {
  const std::size_t all = defaults_in_use_;
  // Words that the formula at hand has met so far are its own fault, whatever its defaults meet.
  const std::optional<std::size_t> met = text_met_;
  std::optional<double> found;
  for (std::size_t i = 0; i < all && !found; ++i) {
    BoundDefault& candidate = plan_->defaults[i];
    if (candidate.dimension != index) continue;
    defaults_in_use_ = i;
    bool skip = false;
    const std::optional<bool> holds = Holds(candidate.condition, candidate.rule, skip);
    if (holds && *holds) found = DefaultValue(candidate);
  }
  defaults_in_use_ = all;
  text_met_ = met;
  return found;
}

std::optional<double> ComponentEvaluator::ResultOf(std::size_t index) {
  if (results_[index].state != Result::kEvaluated) return std::nullopt;
  return exact_pass_ ? results_[index].exact : results_[index].value;
}

CString ComponentEvaluator::TextOf(std::size_t column) {
  return CString::FromUtf8(file_.Row()[column]);
}

}  // namespace lorv::tool
