#include <algorithm>
#include <utility>

#include "framework/ports/window_map.h"
#include "platform/models/desktop/desktop_model.h"
#include "platform/models/first_fault.h"

// Focus, activation, capture, and the keys that are down. State is changed before any window is notified, so
// a handler that asks sees the new state; and every window that is to be notified is, even if one of them
// throws (FirstFault).

namespace lorv {
namespace {

LPARAM AsParameter(HWND window) {
  return reinterpret_cast<LPARAM>(window);
}

}  // namespace

void DesktopModel::ActivateTop(HWND top) {
  const auto window = At(top);
  if (window == nullptr || (window->Style() & WS_DISABLED) != 0) return;
  const HWND former = std::exchange(active_, top);
  if (former != top) RaiseTop(top);
  ActiveChanged();
  // It was active before: nothing new to report.
  if (former == top) return;
  FirstFault fault;
  fault.Run([&] {
    if (StillThere(former)) DeliverMessage(former, WM_ACTIVATE, WA_INACTIVE, AsParameter(top));
  });
  fault.Run([&] {
    // The first handler may have activated yet another.
    if (active_ == top && StillThere(top)) DeliverMessage(top, WM_ACTIVATE, WA_ACTIVE, AsParameter(former));
  });
  fault.Rethrow();
}

// The window to be active when another one goes; null if there is none.
HWND DesktopModel::NextTop(HWND gone, HWND owner) const {
  const auto fits = [this, gone](HWND top) {
    const auto window = At(top);
    return top != gone && window != nullptr && window->Seen() && (window->Style() & WS_DISABLED) == 0 &&
           window->Kind() != WindowKind::Popup;
  };
  // A dialog gives way to the window it belongs to, whatever lies below it.
  if (owner != nullptr && fits(owner)) return owner;
  const auto next = std::find_if(tops_.begin(), tops_.end(), fits);
  return next == tops_.end() ? nullptr : *next;
}

void DesktopModel::ActivateNext(HWND gone, HWND owner) {
  if (const HWND next = NextTop(gone, owner)) return ActivateTop(next);
  MoveFocus(nullptr);
  // A handler may have activated another window meanwhile: that one stays.
  if (active_ == gone) active_ = nullptr;
}

void DesktopModel::MoveFocus(HWND window) {
  if (window == focus_) return;
  if (window != nullptr && active_ != TopOf(window)) {
    ActivateTop(TopOf(window));
    // Activation may have set it, or a handler something else.
    if (!StillThere(window) || active_ != TopOf(window) || focus_ == window) return;
  }
  const HWND former = std::exchange(focus_, window);
  FocusChanged(former);
  FirstFault fault;
  fault.Run([&] {
    if (StillThere(former)) DeliverMessage(former, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
  });
  fault.Run([&] {
    if (focus_ == window && StillThere(window))
      DeliverMessage(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(former), 0);
  });
  fault.Rethrow();
}

void DesktopModel::LeaveWindows() {
  const HWND former = std::exchange(active_, nullptr);
  FirstFault fault;
  fault.Run([&] {
    if (StillThere(former)) DeliverMessage(former, WM_ACTIVATE, WA_INACTIVE, 0);
  });
  fault.Run([&] { MoveFocus(nullptr); });
  fault.Rethrow();
}

void DesktopModel::SetCapture(HWND window) {
  if (window != nullptr && !StillThere(window)) return;
  const HWND former = std::exchange(capture_, window);
  if (former == window) return;
  // The screen's capture is moved before any window is notified, as a handler may take it again.
  CaptureChanged(former);
  if (StillThere(former)) DeliverMessage(former, WM_CAPTURECHANGED, 0, AsParameter(window));
}

void DesktopModel::Hover(HWND window) {
  const HWND former = std::exchange(hovered_, window);
  if (former == window) return;
  if (const auto last = At(former)) last->MouseGone();
}

SHORT DesktopModel::KeyState(int key) const {
  const auto found = keys_.find(key);
  // The topmost bit says "down"; the lowest, "toggled", is not kept.
  return found != keys_.end() && found->second ? static_cast<SHORT>(-0x8000) : SHORT{0};
}

WPARAM DesktopModel::HeldKeys() const {
  constexpr std::pair<int, UINT> kHeld[] = {{VK_LBUTTON, MK_LBUTTON},
                                            {VK_RBUTTON, MK_RBUTTON},
                                            {VK_MBUTTON, MK_MBUTTON},
                                            {VK_SHIFT, MK_SHIFT},
                                            {VK_CONTROL, MK_CONTROL}};
  WPARAM held = 0;
  for (const auto& [key, bit] : kHeld)
    if (KeyState(key) != 0) held |= bit;
  return held;
}

POINT DesktopModel::CursorPosition() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return mouse_;
}

void DesktopModel::SetCursorPosition(POINT at) {
  KeepCursorPosition(at);
}

void DesktopModel::KeepCursorPosition(POINT at) {
  const std::lock_guard<std::mutex> lock(mutex_);
  mouse_ = at;
}

}  // namespace lorv
