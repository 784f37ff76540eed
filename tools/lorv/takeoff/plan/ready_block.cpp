#include "tools/lorv/takeoff/plan/ready_block.h"

#include <cmath>
#include <limits>
#include <map>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"
#include "tools/lorv/text/typed_number.h"

// Evaluates formulas for thousands of components at once. Nearly all components have all their numbers, and
// rows of numbers run many times faster than one component after the other. Whatever is unusual is left to
// the slow way, which has the messages; no result depends on which way it came.

namespace lorv::tool {
namespace {

constexpr double kNoResult = std::numeric_limits<double>::quiet_NaN();

}  // namespace

std::optional<double> NumberOfCell(std::string_view cell, double factor, bool& is_text) {
  is_text = false;
  if (cell.empty()) return std::nullopt;
  const std::optional<double> number = WholeNumber(cell);
  // A number beyond the limit is no measure of a building: it is reported like words.
  is_text = !number || std::fabs(*number * factor) > kLargestDimension;
  if (is_text) return std::nullopt;
  return *number * factor;
}

void ReadyBlock::Begin() {
  plans_.clear();
  numbers_.clear();
  results_.clear();
  // Classes that fit the same rows of the rules share a plan, and so their rows go together.
  std::map<Plan*, std::vector<std::size_t>> by_plan;
  std::vector<std::size_t>* same = nullptr;
  for (std::size_t i = 0; i < file_.BlockSize(); ++i) {
    // Most components are of the class of the one before.
    if (i == 0 || file_.Of(kClassOf, i) != file_.Of(kClassOf, i - 1)) {
      plans_.push_back(&planner_.PlanOf(std::string(file_.Of(kClassOf, i))));
      same = &by_plan[plans_.back()];
    } else {
      plans_.push_back(plans_.back());
    }
    same->push_back(i);
  }
  for (const auto& [plan, components] : by_plan) {
    for (const BoundRule& rule : plan->rules) {
      // Whether or not an earlier row of the name will count: that is known component by component only.
      EvaluateAhead(rule.formula, components);
      if (rule.condition) EvaluateAhead(*rule.condition, components);
    }
  }
}

const double* ReadyBlock::ResultOf(const BoundFormula& formula) const {
  const auto found = results_.find(&formula);
  if (found == results_.end()) return nullptr;
  // No number stands for a component that was left out, failed or is doubtful.
  const double& result = found->second[file_.InBlock()];
  return std::isnan(result) ? nullptr : &result;
}

void ReadyBlock::EvaluateAhead(const BoundFormula& formula, const std::vector<std::size_t>& components) {
  if (!formula.NeedsNumbersOnly()) return;
  std::vector<const Numbers*> numbers;
  for (const std::size_t dimension : formula.Dimensions()) numbers.push_back(&NumbersOf(dimension));
  // Incomplete components are left out before the work and not afterwards: a default or "missing"
  // may fill them.
  std::vector<std::size_t> complete;
  for (const std::size_t component : components) {
    bool has_all = true;
    for (const Numbers* of : numbers) has_all = has_all && !std::isnan((*of)[component]);
    if (has_all) complete.push_back(component);
  }
  std::vector<Numbers> columns(numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    for (const std::size_t component : complete) columns[i].push_back((*numbers[i])[component]);
  }
  const Numbers values = formula.EvaluateRows(columns, complete.size());
  Numbers& results = results_[&formula];
  results.assign(file_.BlockSize(), kNoResult);
  for (std::size_t i = 0; i < complete.size(); ++i) results[complete[i]] = values[i];
}

const ReadyBlock::Numbers& ReadyBlock::NumbersOf(std::size_t dimension) {
  // Most rules ask for the same few dimensions: cells are read once for each block.
  const auto [at, fresh] = numbers_.try_emplace(dimension);
  if (!fresh) return at->second;
  const auto& [name, column, factor] = planner_.Dimensions()[dimension];
  at->second.assign(file_.BlockSize(), kNoResult);
  for (std::size_t i = 0; column && i < file_.BlockSize(); ++i) {
    bool is_text = false;
    at->second[i] = NumberOfCell(file_.RowInBlock(i)[*column], factor, is_text).value_or(kNoResult);
  }
  return at->second;
}

}  // namespace lorv::tool
