#pragma once

#include <string>
#include <vector>

#include "tools/lorv/takeoff/findings/coverage.h"
#include "tools/lorv/takeoff/findings/problems.h"
#include "tools/lorv/takeoff/plan/plan.h"
#include "tools/lorv/takeoff/plan/ready_block.h"

namespace lorv::tool {

// What one quantity of one component came to.
struct Result {
  enum State { kNone, kEvaluated, kFailed };
  State state = kNone;
  double value = 0;
  std::size_t rule = 0;  // which row gave it
  double exact = 0;      // the same with all digits of the dimensions; infinite where it is another one
  bool decided_otherwise = false;  // with all digits, by the condition of the row or of one above
};

// Evaluates all quantities of one component after the other.
class ComponentEvaluator : private ValueSource {
 public:
  ComponentEvaluator(Planner& planner, const ComponentsFile& file, Problems& problems, Coverage& coverage,
                     ValueDigits digits);

  // The results of the component that the file stands at, in the order of its plan; valid until the next
  // call.
  const std::vector<Result>& Evaluate();
  // The same for a component that is not to be evaluated: blocks are evaluated ahead from their first
  // component on.
  void PassOver();

  // The formula of a result with the values of the component at hand in place of the names.
  CString TextWithValues(std::size_t result);

 private:
  struct Value {
    long long component = 0;  // for which it was looked up
    std::optional<double> number;
    bool is_text = false;  // the cell holds what is no number
  };

  std::optional<double> DimensionOf(std::size_t index) override;
  std::optional<double> ResultOf(std::size_t index) override;
  CString TextOf(std::size_t column) override;

  void EvaluateRule(BoundRule& rule);
  // Whether the condition holds; nothing when it could not be evaluated.
  std::optional<bool> Holds(std::optional<BoundFormula>& condition, std::size_t rule, bool& skip);
  Outcome EvaluateFormula(BoundFormula& formula, std::size_t rule);
  void Report(std::size_t rule, RulePart part, const Fault& fault);
  Value LookUp(std::size_t index);
  std::optional<double> DefaultOf(std::size_t index);
  std::optional<double> DefaultValue(BoundDefault& bound);
  void EvaluateExactly(BoundRule& bound, Result& result);
  bool DecidesOtherwise(BoundRule& bound, bool holds);
  void ReportDoubts(const BoundFormula& formula, std::size_t rule, RulePart part, const Outcome& outcome);

  Planner& planner_;
  const ComponentsFile& file_;
  Problems& problems_;
  Coverage& coverage_;
  ReadyBlock ready_;
  Plan* plan_ = nullptr;
  std::vector<Value> values_;
  std::vector<Value> exact_values_;  // for the look with all digits: defaults are evaluated otherwise
  std::vector<Result> results_;
  std::vector<BoundRule*> by_result_;  // which rule gave each
  ValueDigits digits_;
  bool exact_pass_ = false;  // earlier quantities are asked for with all digits
  long long component_ = 0;
  std::size_t defaults_in_use_ = 0;      // only those above may be asked: a default cannot lean on itself
  std::optional<std::size_t> text_met_;  // the dimension whose cell is no number, met by the formula at hand
};

}  // namespace lorv::tool
