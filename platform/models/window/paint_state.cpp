#include "platform/models/window/paint_state.h"

#include <utility>

// What of a window is out of date, for desktops whose system keeps no record. What is invalidated while a
// painting runs is kept twice: the painting that runs may take it, and if it takes nothing it is not asked a
// second time for what it has seen.

namespace lorv {

PaintState::Asking::Asking(PaintState& state)
    : state_(state),
      taken_before_(std::exchange(state.taken_, false)),
      later_before_(std::exchange(state.later_, Region())) {
  ++state_.nesting_;
}

PaintState::Asking::~Asking() {
  --state_.nesting_;
  // Nothing was taken: only what came meanwhile is still asked for.
  if (!state_.taken_) std::swap(state_.pending_, state_.later_);
  state_.later_ = std::move(later_before_);
  // A painting inside took what the one around was asked for.
  state_.taken_ = state_.taken_ || taken_before_;
}

void PaintState::Invalidate(const CRect& client, const RECT* part) {
  const CRect fresh = part == nullptr ? client : client & *part;
  pending_.Add(fresh);
  // A few rectangles too large beat a hundred small ones.
  pending_.Simplify(kMaxDirtyRects);
  if (nesting_ == 0) return;
  later_.Add(fresh);
  later_.Simplify(kMaxDirtyRects);
}

void PaintState::Validate(const RECT* part) {
  if (part == nullptr) {
    pending_.Clear();
    later_.Clear();
  } else {
    pending_.Remove(*part);
    later_.Remove(*part);
  }
}

Region PaintState::Take() {
  taken_ = true;
  later_.Clear();
  return std::exchange(pending_, Region());
}

CRect PaintState::Shift(const CRect& client, SIZE by, const RECT* area, const RECT* clip) {
  const CRect box = area == nullptr ? client : client & *area;
  const CRect bounds = clip == nullptr ? client : client & *clip;
  // Where pixels that were visible before can be copied to; the rest is new.
  const CRect target = (box + by) & bounds & (client + by);
  Region moved = pending_;
  // What was out of date stays so where its pixels go.
  moved.Keep(target - by);
  moved.Move(by);
  Region fresh(box & bounds);
  fresh.Remove(target);
  fresh.Add(moved);
  pending_.Remove(target);
  pending_.Add(fresh);
  pending_.Simplify(kMaxDirtyRects);
  if (nesting_ > 0) later_.Add(fresh);
  return target;
}

}  // namespace lorv
