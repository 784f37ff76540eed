#include "tools/lorv/takeoff/component_worker.h"

#include <cmath>

namespace lorv::tool {
namespace {

// A change below this share of the value, a hundredth of a per cent, changes no bill.
constexpr double kNoChange = 1e-4;

std::string NameOfComponent(const ComponentsFile& file) {
  std::string text = "line " + std::to_string(file.Row().Place().line);
  for (const ComponentRole role : {kClassOf, kNameOf, kStoreyOf}) {
    if (!file.Of(role).empty()) text += ", " + std::string(file.Of(role));
  }
  return text;
}

}  // namespace

double AsWorked(double value) {
  constexpr double kThird = 0.3333333333333333, kTwoThirds = 0.6666666666666666, kNear = 0.001;
  if (std::fabs(value - kThird) < kNear) return kThird;
  if (std::fabs(value - kTwoThirds) < kNear) return kTwoThirds;
  return std::round(value * 1000) / 1000;
}

ComponentWorker::ComponentWorker(Planner& planner, const ComponentsFile& file, Problems& problems)
    : planner_(planner),
      file_(file),
      problems_(problems),
      ready_(planner, file),
      values_(planner.Dimensions().size()),
      roundings_(planner.Dimensions().size()) {}

const std::vector<Result>& ComponentWorker::Work() {
  ++component_;
  if (file_.InBlock() == 0) ready_.Begin();
  plan_ = &ready_.PlanAtHand();
  defaults_in_use_ = plan_->defaults.size();
  results_.assign(plan_->results, {});
  for (BoundRule& rule : plan_->rules) WorkRule(rule);
  return results_;
}

void ComponentWorker::WorkRule(BoundRule& bound) {
  Result& result = results_[bound.result];
  // The first row of a name whose condition holds is the one that counts.
  if (result.state != Result::kNone) return;
  const Rule& rule = planner_.Rules().rules[bound.rule];
  bool skip = false;
  const std::optional<bool> holds = Holds(bound.condition, bound.rule, skip);
  if (holds && !*holds) return;
  result.rule = bound.rule;
  if (!holds) {
    if (!skip) result.state = Result::kFailed;
    return;
  }
  const Outcome outcome = WorkFormula(bound.formula, bound.rule);
  if (outcome.state == Outcome::kMissing && rule.missing == Missing::kSkip) return;
  if (outcome.state != Outcome::kWorked) {
    Report(bound.rule, RulePart::kFormula, outcome.fault);
    result.state = Result::kFailed;
    return;
  }
  result.state = Result::kWorked;
  result.value = outcome.value * rule.factor;
}

std::optional<bool> ComponentWorker::Holds(std::optional<BoundFormula>& condition, std::size_t rule,
                                           bool& skip) {
  if (!condition) return true;
  const Outcome outcome = WorkFormula(*condition, rule);
  // As the function IIF has it.
  if (outcome.state == Outcome::kWorked) return outcome.value > 0;
  skip = outcome.state == Outcome::kMissing && planner_.Rules().rules[rule].missing == Missing::kSkip;
  if (!skip) Report(rule, RulePart::kCondition, outcome.fault);
  return std::nullopt;
}

Outcome ComponentWorker::WorkFormula(BoundFormula& formula, std::size_t rule) {
  const Rule& row = planner_.Rules().rules[rule];
  std::optional<double> instead;
  if (row.missing == Missing::kUseNumber) instead = row.missing_value;
  text_met_.reset();
  if (const double* const result = ready_.ResultOf(formula)) {
    for (const std::size_t dimension : formula.Dimensions()) DimensionOf(dimension);
    return {Outcome::kWorked, *result, {}};
  }
  Outcome outcome = formula.Work(*this, instead);
  // Words where a number belongs are no missing value: they are never passed over.
  if (!text_met_) return outcome;
  outcome.state = Outcome::kFaulty;
  outcome.fault.message = "the value for \"" + planner_.Dimensions()[*text_met_].name + "\" is no number";
  return outcome;
}

void ComponentWorker::Report(std::size_t rule, RulePart part, const Fault& fault) {
  problems_.Add(rule, part, fault, NameOfComponent(file_));
}

std::optional<double> ComponentWorker::DimensionOf(std::size_t index) {
  Value& value = values_[index];
  if (value.component != component_) {
    const Value found = LookUp(index);
    // Inside a default fewer defaults are asked: what was found there may be less than there is.
    if (defaults_in_use_ < plan_->defaults.size()) return found.number;
    value = found;
    if (value.number) NoteRounding(index, *value.number);
  }
  if (value.is_text) text_met_ = index;
  return value.number;
}

ComponentWorker::Value ComponentWorker::LookUp(std::size_t index) {
  const Dimension& dimension = planner_.Dimensions()[index];
  Value value{component_, std::nullopt, false};
  const std::string_view cell = dimension.column ? file_.Row()[*dimension.column] : std::string_view();
  value.number = cell.empty() ? DefaultOf(index) : NumberOfCell(cell, dimension.factor, value.is_text);
  return value;
}

std::optional<double> ComponentWorker::DefaultOf(std::size_t index) {
  const std::size_t all = defaults_in_use_;
  std::optional<double> found;
  for (std::size_t i = 0; i < all && !found; ++i) {
    BoundDefault& candidate = plan_->defaults[i];
    if (candidate.dimension != index) continue;
    defaults_in_use_ = i;
    bool skip = false;
    const std::optional<bool> holds = Holds(candidate.condition, candidate.rule, skip);
    if (holds && *holds) {
      const Outcome outcome = WorkFormula(candidate.formula, candidate.rule);
      if (outcome.state == Outcome::kWorked)
        found = outcome.value * planner_.Rules().rules[candidate.rule].factor;
      if (outcome.state == Outcome::kFaulty) Report(candidate.rule, RulePart::kFormula, outcome.fault);
    }
  }
  defaults_in_use_ = all;
  text_met_.reset();
  return found;
}

void ComponentWorker::NoteRounding(std::size_t index, double value) {
  const double change = std::fabs(AsWorked(value) - value);
  if (change <= kNoChange * std::fabs(value)) return;
  Rounding& rounding = roundings_[index];
  ++rounding.values;
  rounding.largest = std::max(rounding.largest, change / std::fabs(value));
}

std::optional<double> ComponentWorker::ResultOf(std::size_t index) {
  if (results_[index].state != Result::kWorked) return std::nullopt;
  return results_[index].value;
}

CString ComponentWorker::TextOf(std::size_t column) {
  return CString::FromUtf8(file_.Row()[column]);
}

}  // namespace lorv::tool
