#include "framework/ports/drop_port.h"

#include <unordered_map>

// Which window takes drops, by its handle: peers ask here, so that the class of a window and its peer need
// not know each other. On one thread only, as windows are.

namespace lorv {
namespace {

std::unordered_map<HWND, DropReceiver*>& Live() {
  static std::unordered_map<HWND, DropReceiver*> live;
  return live;
}

}  // namespace

void MapDropReceiver(HWND window, DropReceiver* receiver) {
  if (window != nullptr && receiver != nullptr) Live()[window] = receiver;
}

void UnmapDropReceiver(HWND window) {
  Live().erase(window);
}

DropReceiver* MappedDropReceiver(HWND window) {
  const auto found = Live().find(window);
  return found == Live().end() ? nullptr : found->second;
}

DROPEFFECT UsualDropEffect(DWORD keys, DROPEFFECT allowed) {
  const bool control = (keys & MK_CONTROL) != 0;
  const bool shift = (keys & MK_SHIFT) != 0;
  if (control || shift) {
    const DROPEFFECT asked =
        control && shift ? DROPEFFECT_LINK : (control ? DROPEFFECT_COPY : DROPEFFECT_MOVE);
    return allowed & asked;
  }
  constexpr DROPEFFECT kInOrder[] = {DROPEFFECT_MOVE, DROPEFFECT_COPY, DROPEFFECT_LINK};
  for (const DROPEFFECT effect : kInOrder)
    if ((allowed & effect) != 0) return effect;
  return DROPEFFECT_NONE;
}

}  // namespace lorv
