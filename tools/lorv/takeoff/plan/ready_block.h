#pragma once

#include <unordered_map>
#include <vector>

#include "tools/lorv/takeoff/plan/plan.h"

namespace lorv::tool {

// The number in a cell in the dimension's unit; none where the cell is empty, and `is_text` where it holds
// what is no number.
std::optional<double> NumberOfCell(std::string_view cell, double factor, bool& is_text);

// Evaluates ahead for a block of components what needs nothing but their numbers: each formula once for all
// components of a plan. What is left (missing values, words, earlier quantities, whatever fails) is evaluated
// component by component, which reports what is wrong.
class ReadyBlock {
 public:
  ReadyBlock(Planner& planner, const ComponentsFile& file) : planner_(planner), file_(file) {}

  // For the block that the file has begun; what was found for the one before is forgotten.
  void Begin();

  // The plan of the component at hand.
  Plan& PlanAtHand() const { return *plans_[file_.InBlock()]; }
  // What a formula comes to for it; null where it has to be evaluated.
  const double* ResultOf(const BoundFormula& formula) const;

 private:
  // Of one dimension for all components of the block; not a number where there is none.
  using Numbers = std::vector<double>;

  void EvaluateAhead(const BoundFormula& formula, const std::vector<std::size_t>& components);
  const Numbers& NumbersOf(std::size_t dimension);

  Planner& planner_;
  const ComponentsFile& file_;
  std::vector<Plan*> plans_;  // of each component
  std::unordered_map<std::size_t, Numbers> numbers_;
  std::unordered_map<const BoundFormula*, Numbers> results_;
};

}  // namespace lorv::tool
