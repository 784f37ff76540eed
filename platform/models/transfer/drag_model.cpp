#include "platform/models/transfer/drag_model.h"

#include <utility>

#include "framework/drawing/geometry.h"
#include "platform/models/desktop/desktop_model.h"

// The order of calls that a drop target gets: it is entered before it is asked, left before the next one
// is entered, and gets either the drop or the leave at the end, once. Receivers may end windows, so all is
// looked up again after each.

namespace lorv {

// The innermost window there with a receiver: a label within a grid does not keep the drop from the grid.
HWND DragModel::ReceiverAt(POINT screen) const {
  for (HWND at = desktop_.WindowAt(screen); at != nullptr;) {
    const auto window = desktop_.At(at);
    if (window == nullptr || window->Blocked()) return nullptr;
    if (MappedDropReceiver(at) != nullptr) return at;
    at = window->Parent();
  }
  return nullptr;
}

DragPlace DragModel::PlaceIn(HWND window) const {
  const auto peer = desktop_.At(window);
  const CPoint origin(peer == nullptr ? POINT{0, 0} : peer->ClientOrigin());
  return {CPoint(screen_) - CSize(origin), keys_, allowed_};
}

void DragModel::LeaveTarget() {
  effect_ = DROPEFFECT_NONE;
  DropReceiver* const receiver = Receiver();
  target_ = nullptr;
  if (receiver != nullptr) receiver->Leave();
}

void DragModel::Move(POINT screen, DWORD keys) {
  if (over_) return;
  screen_ = screen;
  keys_ = keys;
  const HWND next = ReceiverAt(screen);
  const bool enters = next != target_;
  if (enters && target_ != nullptr) LeaveTarget();
  target_ = next;
  DropReceiver* const receiver = Receiver();
  if (receiver == nullptr) {
    effect_ = DROPEFFECT_NONE;
    return;
  }
  const DragPlace place = PlaceIn(next);
  // A receiver that throws has promised nothing, whatever it promised before.
  effect_ = DROPEFFECT_NONE;
  effect_ = (enters ? receiver->Enter(*content_, place) : receiver->Over(*content_, place)) & allowed_;
}

DROPEFFECT DragModel::Drop() {
  if (std::exchange(over_, true)) return effect_;
  DropReceiver* const receiver = Receiver();
  if (receiver == nullptr || effect_ == DROPEFFECT_NONE) {
    LeaveTarget();
    return effect_;
  }
  const DragPlace place = PlaceIn(std::exchange(target_, nullptr));
  const DROPEFFECT asked = std::exchange(effect_, DROPEFFECT_NONE);
  effect_ = receiver->Drop(*content_, place, asked) & allowed_;
  return effect_;
}

void DragModel::Cancel() {
  if (!std::exchange(over_, true)) LeaveTarget();
}

}  // namespace lorv
