#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"

// The queue and the clock of the headless desktop. Time stands until a test advances it, and then runs from
// timer to timer, so that what a timer's handler does happens at its own time.

namespace lorv {

DWORD HeadlessDesktop::Ticks() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return ticks_;
}

bool HeadlessDesktop::PumpInput() {
  if (input_.empty()) return false;
  // A copy, taken out before it is played: a handler may put in more or run a loop of its own.
  const Input input = input_.front();
  input_.pop_front();
  if (input.other) {
    input.other();
    return true;
  }
  if (PlayDrag(input)) return true;
  if (input.message >= WM_MOUSEFIRST && input.message <= WM_MOUSELAST)
    PlayMouse(input);
  else
    PlayKey(input);
  return true;
}

// A window whose painting asks for the next one does not keep all else waiting.
bool HeadlessDesktop::PumpPaint() {
  if (paints_in_a_row_ >= kMaxPaintsInARow) return false;
  for (const HWND top : Windows()) {
    const auto window = At(FirstDirty(top));
    if (window == nullptr) continue;
    ++paints_in_a_row_;
    window->Update();
    return true;
  }
  return false;
}

bool HeadlessDesktop::PumpTimer() {
  const DWORD now = Ticks();
  const auto due = std::find_if(timers_.begin(), timers_.end(), [now](const Timer& timer) {
    // By the difference: the clock wraps around after seven weeks.
    return static_cast<std::int32_t>(now - timer.due) >= 0;
  });
  if (due == timers_.end()) return false;
  const Timer timer = *due;
  timers_.erase(due);
  // Behind the others, so that one short timer does not starve them; before the call, as its handler may stop
  // it.
  timers_.push_back({timer.window, timer.id, now + timer.period, timer.period});
  Deliver(MessageNow(timer.window, WM_TIMER, timer.id, 0));
  return true;
}

void HeadlessDesktop::StartTimer(HWND window, UINT_PTR id, UINT period) {
  StopTimer(window, id);
  timers_.push_back({window, id, Ticks() + period, period});
}

bool HeadlessDesktop::StopTimer(HWND window, UINT_PTR id) {
  return std::erase_if(timers_,
                       [&](const Timer& timer) { return timer.window == window && timer.id == id; }) != 0;
}

bool HeadlessDesktop::PumpOnce(bool wait) {
  // The system's order: posted messages, input, painting, timers.
  if (PumpPosted() || PumpInput()) {
    paints_in_a_row_ = 0;
    return true;
  }
  if (PumpPaint()) return true;
  paints_in_a_row_ = 0;
  if (PumpTimer()) return true;
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
    // No farther than to the next timer, so that its handler finds the time it asked for.
    for (const Timer& timer : timers_) step = std::min(step, std::max<DWORD>(timer.due - now, 1));
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      ticks_ += step;
    }
    left -= step;
    RunUntilIdle();
  }
}

// A dialog without an answer is cancelled, and left if that does not end it.
bool HeadlessDesktop::DispatchModal(HWND dialog) {
  if (Pump(true) || Quits()) return true;
  // A second time for the same dialog: it did not take the first.
  if (std::erase(cancelled_, dialog) != 0) return false;
  cancelled_.push_back(dialog);
  Send(dialog, WM_COMMAND, IDCANCEL, 0);
  return true;
}

}  // namespace lorv
