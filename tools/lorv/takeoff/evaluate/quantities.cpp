#include "tools/lorv/takeoff/evaluate/quantities.h"

#include <algorithm>
#include <cmath>

#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/language/spoken_language.h"

// Joins the rows of a rule set into the quantities that the bill has columns for, and calculates ratios of
// their totals. It is made once, before any component is read, so that rows which contradict each other are
// refused at the start and not when the bill is due.

namespace lorv::tool {
namespace {

constexpr int kMessageColumns = 100;

}  // namespace

Quantities::Quantities(const RuleSet& rules) {
  for (std::size_t index = 0; index < rules.rules.size(); ++index) {
    const Rule& rule = rules.rules[index];
    of_rule_.push_back(-1);
    if (rule.kind != RuleKind::kQuantity) continue;
    // Rule sets have dozens of quantities, and this is done once for each row.
    std::size_t at = 0;
    while (at < list_.size() && (list_[at].name != rule.name || list_[at].unit != rule.unit)) ++at;
    if (at == list_.size()) list_.push_back({rule.name, rule.unit, {}, {}, index, false});
    of_rule_.back() = static_cast<int>(at);
    Join(rules, rule, list_[at]);
  }
  // Ratios come last: they may name quantities of rows below them.
  for (std::size_t index = 0; index < rules.rules.size(); ++index) {
    if (rules.rules[index].kind == RuleKind::kRatio) AddRatio(rules, rules.rules[index], index);
  }
}

// The bill has one column for all rows of a quantity: the finest of their decimals, and one way of totalling.
void Quantities::Join(const RuleSet& rules, const Rule& rule, Quantity& quantity) {
  // A row that says nothing does not coarsen what another one asked for.
  if (rule.decimals) quantity.says_decimals = std::max(quantity.says_decimals.value_or(0), *rule.decimals);
  if (!rule.totalling) return;
  if (quantity.says_totalling && *quantity.says_totalling != *rule.totalling) {
    throw BadInput(PlaceText(rules.file, rule.total_place) +
                   Say("a row above totals {} in another way", {rule.name}));
  }
  quantity.says_totalling = rule.totalling;
}

// Names are those of quantities, with letters of any language: blanks inside a name stand as "_" in the
// formula.
void Quantities::AddRatio(const RuleSet& rules, const Rule& rule, std::size_t index) {
  std::vector<ExactName> names;
  for (const Quantity& quantity : list_) {
    CString name = CString::FromUtf8(quantity.name);
    name.Replace(_T(" "), _T("_"));
    names.push_back({name});
  }
  ExactFormula formula(rule.formula, names);
  if (formula.Fault().fault != FormulaFault::kNone) {
    const Fault fault = FaultOf(formula.Fault());
    throw BadInput(PlaceText(rules.file, rule.formula_place) +
                   Say("the ratio {} cannot be calculated: {}", {rule.name, fault.message}) + "\n" +
                   CaretText(rule.formula, fault.position, fault.length, kMessageColumns));
  }
  std::vector<std::size_t> needs;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (formula.Uses(i)) needs.push_back(i);
  }
  for (const FormulaDiagnosis& doubt : formula.Doubts()) doubts_.emplace_back(index, FaultOf(doubt));
  ratios_.push_back({list_.size(), std::move(needs), std::move(formula)});
  list_.push_back({rule.name, rule.unit, rule.decimals, {}, index, true});
}

std::optional<double> Quantities::Ratio(std::size_t quantity,
                                        const std::vector<std::optional<double>>& totals) const {
  const auto ratio = std::find_if(ratios_.begin(), ratios_.end(), [=](const RatioFormula& candidate) {
    return candidate.quantity == quantity;
  });
  std::vector<double> values(totals.size());
  // A line that lacks one of the quantities has no ratio; that is ordinary, and nothing is reported of it.
  for (const std::size_t need : ratio->needs) {
    if (!totals[need]) return std::nullopt;
    values[need] = *totals[need];
  }
  int code = 0;
  const double value = ratio->formula.Evaluate(values.data(), code);
  if (code == 0 && std::isfinite(value)) return value;
  Fault fault = code == 0 ? Fault{0, 0, Say("the result is no number"), false, true}
                          : FaultOf(ratio->formula.Explain());
  // A line without the ratio is no wrong line: it is reported and stops nothing.
  fault.stops = false;
  // The first line's reason only: a ratio over zero fails in every storey for the same one.
  failed_.emplace(list_[quantity].rule, fault);
  return std::nullopt;
}

std::vector<std::pair<std::size_t, Fault>> Quantities::RatioDoubts() const {
  std::vector<std::pair<std::size_t, Fault>> doubts = doubts_;
  doubts.insert(doubts.end(), failed_.begin(), failed_.end());
  return doubts;
}

}  // namespace lorv::tool
