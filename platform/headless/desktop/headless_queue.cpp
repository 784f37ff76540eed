#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"

// The queue and the clock of the headless desktop.

namespace lorv {

bool HeadlessDesktop::Post(HWND window, UINT message, WPARAM w, LPARAM l) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (window != nullptr && windows_.count(window) == 0) return false;
  posted_.push_back({window, message, w, l, ticks_, mouse_});
  return true;
}

LRESULT HeadlessDesktop::Send(HWND window, UINT message, WPARAM w, LPARAM l) {
  return StillThere(window) ? DeliverMessage(window, message, w, l) : 0;
}

DWORD HeadlessDesktop::Ticks() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return ticks_;
}

void HeadlessDesktop::Deliver(MSG message) {
  if (OfferMessage(message) || !StillThere(message.hwnd)) return;
  if (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) Translate(message);
  DeliverMessage(message.hwnd, message.message, message.wParam, message.lParam);
}

bool HeadlessDesktop::PumpPosted() {
  MSG message = {};
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (posted_.empty()) return false;
    message = posted_.front();
    posted_.pop_front();
  }
  Deliver(message);
  return true;
}

bool HeadlessDesktop::PumpInput() {
  if (input_.empty()) return false;
  const Input input = input_.front();
  input_.pop_front();
  if (input.message >= WM_MOUSEFIRST && input.message <= WM_MOUSELAST)
    PlayMouse(input);
  else
    PlayKey(input);
  return true;
}

HWND HeadlessDesktop::FirstDirty(HWND at) const {
  const auto window = At(at);
  if (window == nullptr || (window->Style() & WS_VISIBLE) == 0) return nullptr;
  if (window->Dirty().IsRectEmpty() == 0) return at;
  for (const HWND child : window->Children())
    if (const HWND dirty = FirstDirty(child)) return dirty;
  return nullptr;
}

bool HeadlessDesktop::PumpPaint() {
  for (const HWND top : tops_) {
    const auto window = At(FirstDirty(top));
    if (window == nullptr) continue;
    window->Update();
    return true;
  }
  return false;
}

bool HeadlessDesktop::PumpTimer() {
  const DWORD now = Ticks();
  const auto due = std::find_if(timers_.begin(), timers_.end(), [now](const Timer& timer) {
    return static_cast<std::int32_t>(now - timer.due) >= 0;
  });
  if (due == timers_.end()) return false;
  const Timer timer = *due;
  timers_.erase(due);
  timers_.push_back({timer.window, timer.id, now + timer.period, timer.period});
  Deliver({timer.window, WM_TIMER, timer.id, 0, now, mouse_});
  return true;
}

void HeadlessDesktop::StartTimer(HWND window, UINT_PTR id, UINT period) {
  StopTimer(window, id);
  timers_.push_back({window, id, Ticks() + period, period});
}

void HeadlessDesktop::StopTimer(HWND window, UINT_PTR id) {
  std::erase_if(timers_, [&](const Timer& timer) { return timer.window == window && timer.id == id; });
}

bool HeadlessDesktop::Pump(bool wait) {
  if (PumpPosted() || PumpInput() || PumpPaint() || PumpTimer()) return true;
  if (!wait || steps_.empty()) return false;
  const std::function<void()> step = std::move(steps_.front());
  steps_.pop_front();
  step();
  return true;
}

void HeadlessDesktop::RunUntilIdle() {
  while (Pump(false)) {
  }
}

void HeadlessDesktop::Advance(DWORD milliseconds) {
  RunUntilIdle();
  for (DWORD left = milliseconds; left > 0;) {
    DWORD step = left;
    const DWORD now = Ticks();
    for (const Timer& timer : timers_) step = std::min(step, std::max<DWORD>(timer.due - now, 1));
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      ticks_ += step;
    }
    left -= step;
    RunUntilIdle();
  }
}

void HeadlessDesktop::RunModal(HWND dialog) {
  const auto window = At(dialog);
  if (window == nullptr) return;
  const auto owner = At(TopOf(window->Owner()));
  const bool disabled_it = owner != nullptr && (owner->Style() & WS_DISABLED) == 0;
  if (disabled_it) owner->Enable(false);
  modal_.push_back(dialog);
  const auto runs = [this, dialog] {
    return StillThere(dialog) && std::find(modal_.begin(), modal_.end(), dialog) != modal_.end();
  };
  bool cancelled = false;
  while (runs()) {
    if (Pump(true)) continue;
    // Nobody is there to answer.
    if (cancelled) break;
    cancelled = true;
    Send(dialog, WM_COMMAND, IDCANCEL, 0);
  }
  std::erase(modal_, dialog);
  if (disabled_it) owner->Enable(true);
  if (disabled_it && owner->Exists() && (active_ == nullptr || active_ == dialog))
    ActivateTop(owner->Handle());
}

void HeadlessDesktop::EndModal(HWND dialog) {
  std::erase(modal_, dialog);
}

}  // namespace lorv
