#pragma once

#include <string>
#include <vector>

#include "tools/lorv/takeoff/plan.h"
#include "tools/lorv/takeoff/problems.h"
#include "tools/lorv/takeoff/ready_block.h"

namespace lorv::tool {

// What one quantity of one component came to.
struct Result {
  enum State { kNone, kWorked, kFailed };
  State state = kNone;
  double value = 0;
  std::size_t rule = 0;  // which row gave it
};

// How often a dimension lost digits on its way into a formula: values carry three decimals.
struct Rounding {
  long long values = 0;
  double largest = 0;  // of the change, as a share of the value
};

// Works all quantities of one component after the other.
class ComponentWorker : private ValueSource {
 public:
  ComponentWorker(Planner& planner, const ComponentsFile& file, Problems& problems);

  // The results of the component that the file stands at, in the order of its plan; valid until the next
  // call.
  const std::vector<Result>& Work();

  // By dimension.
  const std::vector<Rounding>& Roundings() const { return roundings_; }

 private:
  struct Value {
    long long component = 0;  // for which it was looked up
    std::optional<double> number;
    bool is_text = false;  // the cell holds what is no number
  };

  std::optional<double> DimensionOf(std::size_t index) override;
  std::optional<double> ResultOf(std::size_t index) override;
  CString TextOf(std::size_t column) override;

  void WorkRule(BoundRule& rule);
  // Whether the condition holds; nothing when it could not be worked.
  std::optional<bool> Holds(std::optional<BoundFormula>& condition, std::size_t rule, bool& skip);
  Outcome WorkFormula(BoundFormula& formula, std::size_t rule);
  void Report(std::size_t rule, RulePart part, const Fault& fault);
  Value LookUp(std::size_t index);
  std::optional<double> DefaultOf(std::size_t index);
  void NoteRounding(std::size_t index, double value);

  Planner& planner_;
  const ComponentsFile& file_;
  Problems& problems_;
  ReadyBlock ready_;
  Plan* plan_ = nullptr;
  std::vector<Value> values_;
  std::vector<Rounding> roundings_;
  std::vector<Result> results_;
  long long component_ = 0;
  std::size_t defaults_in_use_ = 0;      // only those above may be asked: a default cannot lean on itself
  std::optional<std::size_t> text_met_;  // the dimension whose cell is no number, met by the formula at hand
};

// The number as a formula works with it: three decimals, thirds as they are.
double AsWorked(double value);

}  // namespace lorv::tool
