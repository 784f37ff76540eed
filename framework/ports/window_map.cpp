#include "framework/ports/window_map.h"

#include <unordered_map>

#include "framework/ports/desktop_port.h"

namespace lorv {
namespace {

std::unordered_map<HWND, MessageTarget*>& Live() {
  static std::unordered_map<HWND, MessageTarget*> live;
  return live;
}

HWND ParentOf(HWND window) {
  const auto peer = DesktopInForce().Find(window);
  return peer == nullptr ? nullptr : peer->Parent();
}

}  // namespace

void MapWindow(HWND window, MessageTarget* target) {
  if (window != nullptr) Live()[window] = target;
}

void UnmapWindow(HWND window) {
  Live().erase(window);
}

MessageTarget* MappedWindow(HWND window) {
  const auto found = Live().find(window);
  return found == Live().end() ? nullptr : found->second;
}

LRESULT DeliverMessage(HWND window, UINT message, WPARAM w, LPARAM l) {
  MessageTarget* const target = MappedWindow(window);
  if (target != nullptr) return target->HandleMessage(window, message, w, l);
  const auto peer = DesktopInForce().Find(window);
  return peer == nullptr ? 0 : peer->Default(message, w, l);
}

bool OfferMessage(MSG& message) {
  for (HWND at = message.hwnd; at != nullptr;) {
    // The way up is looked up before the call: the call may destroy where it stands.
    const HWND above = ParentOf(at);
    MessageTarget* const target = MappedWindow(at);
    if (target != nullptr && target->TakeMessage(message)) return true;
    at = above;
  }
  return false;
}

}  // namespace lorv
