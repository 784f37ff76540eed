#include "TEXPRESSCAL/compiled/fused_steps.h"

#include <cstddef>
#include <utility>

// Joins neighbouring steps of a program into the fused ones that the interpreter runs. A step that some
// branch goes to always begins a fused step, so jumping into the middle of one is not possible; fusing
// changes neither an operation nor their order.

namespace lorv {
namespace {

// These name a step further on, which must then begin a fused step of its own.
bool GoesElsewhere(StepKind kind) {
  return kind == StepKind::kAnd || kind == StepKind::kOr || kind == StepKind::kIf || kind == StepKind::kElse;
}

// Comparisons take nothing second, but may branch.
bool IsComparison(StepKind kind) {
  return kind >= StepKind::kLess && kind <= StepKind::kNotEqual;
}

// Only arithmetic that takes the accumulator as it stands can follow within the same fused step.
FusedSecond SecondOf(const Step& step) {
  if (step.Loads()) return FusedSecond::kNothing;
  switch (step.kind) {
    case StepKind::kAdd:
      return FusedSecond::kAdd;
    case StepKind::kSubtract:
      return FusedSecond::kSubtract;
    case StepKind::kSubtractFrom:
      return FusedSecond::kSubtractFrom;
    case StepKind::kMultiply:
      return FusedSecond::kMultiply;
    default:
      return FusedSecond::kNothing;
  }
}

// Walks the steps once from the first to the last.
class FusedStepMaker {
 public:
  explicit FusedStepMaker(const std::vector<Step>& steps)
      : steps_(steps), is_goal_(steps.size()), place_(steps.size()) {
    for (std::size_t at = 0; at < steps.size(); ++at) {
      if (GoesElsewhere(steps[at].kind)) is_goal_[at + steps[at].further] = true;
    }
  }

  std::vector<FusedStep> Make() {
    for (std::size_t at = 0; at < steps_.size();) {
      place_[at] = fused_.size();
      at = MayLoad(steps_[at].kind) ? TakeJoined(at) : TakeOther(at);
    }
    for (const auto& [from, goal] : ways_)
      // Branches only go forward, so the distance is positive and fits: programs have a most number of steps.
      fused_[from].target = static_cast<std::uint16_t>(place_[goal] - from);
    return std::move(fused_);
  }

 private:
  // Whether the step is of a kind, and only ever reached from the one before.
  bool Follows(std::size_t at, StepKind kind) const { return steps_[at].kind == kind && !is_goal_[at]; }

  // Takes a step and, as far as nothing jumps between them, a second one and what is done with the outcome.
  std::size_t TakeJoined(std::size_t at) {
    const Step& step = steps_[at++];
    FusedStep fused{nullptr, step.further, step.cell, step.other, 0, 0, 0};
    FusedSecond second = FusedSecond::kNothing;
    // There is a step behind every one that comes here: the last step of a program is its end.
    if (!IsComparison(step.kind) && !is_goal_[at]) second = SecondOf(steps_[at]);
    if (second != FusedSecond::kNothing) fused.second = steps_[at++].cell;
    FusedTail tail = FusedTail::kGoesOn;
    if (Follows(at, StepKind::kSave)) {
      tail = FusedTail::kSaves;
      fused.target = steps_[at++].cell;
    } else if (Follows(at, StepKind::kEnd)) {
      tail = FusedTail::kEnds;
      ++at;
    } else if (IsComparison(step.kind) && Follows(at, StepKind::kIf)) {
      tail = FusedTail::kBranches;
      ways_.emplace_back(fused_.size(), at + steps_[at].further);
      ++at;
    }
    fused.run = HandlerOf(step.kind, step.Loads(), second, tail);
    fused_.push_back(fused);
    return at;
  }

  // The end of a choice does nothing for a single number: one branch alone was run.
  std::size_t TakeOther(std::size_t at) {
    const Step& step = steps_[at];
    if (step.kind == StepKind::kEndIf) return at + 1;
    if (GoesElsewhere(step.kind)) ways_.emplace_back(fused_.size(), at + step.further);
    fused_.push_back({HandlerOf(step), 0, step.cell, step.other, 0, step.cell, step.rule});
    return at + 1;
  }

  const std::vector<Step>& steps_;
  std::vector<bool> is_goal_;
  std::vector<std::size_t> place_;  // of each step, the fused one that begins with it
  std::vector<FusedStep> fused_;
  std::vector<std::pair<std::size_t, std::size_t>> ways_;  // from a fused step to a step elsewhere
};

}  // namespace

// Distances are filled in at the end, when the place of every step is known.
std::vector<FusedStep> FuseSteps(const std::vector<Step>& steps) {
  return FusedStepMaker(steps).Make();
}

}  // namespace lorv
