#include "framework/ports/window_map.h"

#include <unordered_map>

#include "framework/ports/desktop_port.h"

// Which object belongs to a handle, and the way of a message from a peer to it. Peers and window classes hold
// no pointers to one another but look here at each call, so a handler may destroy any window and any object.
// For the thread of the user interface only, hence no lock.

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
  // A window without an object, such as a plain label of a dialog, goes on with its peer's own behaviour.
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
