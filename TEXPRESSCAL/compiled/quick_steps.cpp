#include "TEXPRESSCAL/compiled/quick_steps.h"

#include <cstddef>
#include <utility>

namespace lorv {
namespace {

bool GoesElsewhere(StepKind kind) {
  return kind == StepKind::kAnd || kind == StepKind::kOr || kind == StepKind::kIf || kind == StepKind::kElse;
}

bool IsComparison(StepKind kind) {
  return kind >= StepKind::kLess && kind <= StepKind::kNotEqual;
}

QuickSecond SecondOf(const Step& step) {
  if (step.Loads()) return QuickSecond::kNothing;
  switch (step.kind) {
    case StepKind::kAdd:
      return QuickSecond::kAdd;
    case StepKind::kSubtract:
      return QuickSecond::kSubtract;
    case StepKind::kSubtractFrom:
      return QuickSecond::kSubtractFrom;
    case StepKind::kMultiply:
      return QuickSecond::kMultiply;
    default:
      return QuickSecond::kNothing;
  }
}

class QuickStepMaker {
 public:
  explicit QuickStepMaker(const std::vector<Step>& steps)
      : steps_(steps), is_goal_(steps.size()), place_(steps.size()) {
    for (std::size_t at = 0; at < steps.size(); ++at) {
      if (GoesElsewhere(steps[at].kind)) is_goal_[at + steps[at].further] = true;
    }
  }

  std::vector<QuickStep> Make() {
    for (std::size_t at = 0; at < steps_.size();) {
      place_[at] = quick_.size();
      at = MayLoad(steps_[at].kind) ? TakeJoined(at) : TakeOther(at);
    }
    for (const auto& [from, goal] : ways_)
      quick_[from].target = static_cast<std::uint16_t>(place_[goal] - from);
    return std::move(quick_);
  }

 private:
  // Whether the step is of a kind, and only ever reached from the one before.
  bool Follows(std::size_t at, StepKind kind) const { return steps_[at].kind == kind && !is_goal_[at]; }

  std::size_t TakeJoined(std::size_t at) {
    const Step& step = steps_[at++];
    QuickStep quick{nullptr, step.further, step.cell, step.other, 0, 0, 0};
    QuickSecond second = QuickSecond::kNothing;
    if (!IsComparison(step.kind) && !is_goal_[at]) second = SecondOf(steps_[at]);
    if (second != QuickSecond::kNothing) quick.second = steps_[at++].cell;
    QuickTail tail = QuickTail::kGoesOn;
    if (Follows(at, StepKind::kSave)) {
      tail = QuickTail::kSaves;
      quick.target = steps_[at++].cell;
    } else if (Follows(at, StepKind::kEnd)) {
      tail = QuickTail::kEnds;
      ++at;
    } else if (IsComparison(step.kind) && Follows(at, StepKind::kIf)) {
      tail = QuickTail::kBranches;
      ways_.emplace_back(quick_.size(), at + steps_[at].further);
      ++at;
    }
    quick.run = QuickWorkOf(step.kind, step.Loads(), second, tail);
    quick_.push_back(quick);
    return at;
  }

  std::size_t TakeOther(std::size_t at) {
    const Step& step = steps_[at];
    if (step.kind == StepKind::kEndIf) return at + 1;
    if (GoesElsewhere(step.kind)) ways_.emplace_back(quick_.size(), at + step.further);
    quick_.push_back({QuickWorkOf(step), 0, step.cell, step.other, 0, step.cell, step.rule});
    return at + 1;
  }

  const std::vector<Step>& steps_;
  std::vector<bool> is_goal_;
  std::vector<std::size_t> place_;  // of each step, the quick one that begins with it
  std::vector<QuickStep> quick_;
  std::vector<std::pair<std::size_t, std::size_t>> ways_;  // from a quick step to a step elsewhere
};

}  // namespace

std::vector<QuickStep> QuickStepsOf(const std::vector<Step>& steps) {
  return QuickStepMaker(steps).Make();
}

}  // namespace lorv
