#include "platform/headless/desktop/headless_waits.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "platform/headless/desktop/headless_desktop.h"

// A sleeper is taken from the list before it runs, and its event is touched under the mutex only, which the
// sleeper takes before it goes: so no event is touched that has ended.
namespace lorv {

bool HeadlessWaits::WaitFor(CEvent& event, DWORD milliseconds) {
  if (milliseconds == 0) return event.Lock(0) != 0;
  Sleeper self = {&event, desktop_.Ticks() + milliseconds};
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    sleepers_.push_back(&self);
  }
  changed_.notify_all();
  const bool signalled = event.WaitUntil([&self] { return self.over.load(); });
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::erase(sleepers_, &self);
  }
  changed_.notify_all();
  return signalled;
}

std::size_t HeadlessWaits::Sleepers() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return sleepers_.size();
}

bool HeadlessWaits::AwaitSleepers(std::size_t count) {
  constexpr std::chrono::seconds kPatience{10};
  std::unique_lock<std::mutex> lock(mutex_);
  // By the system's clock: the thread sanitizer of gcc 12 does not see waits by the steady one.
  return changed_.wait_until(lock, std::chrono::system_clock::now() + kPatience,
                             [&] { return sleepers_.size() == count; });
}

DWORD HeadlessWaits::StepWithin(DWORD left) const {
  const DWORD now = desktop_.Ticks();
  const std::lock_guard<std::mutex> lock(mutex_);
  // At least 1, or Advance would not get on over a sleeper that is due now.
  for (const Sleeper* sleeper : sleepers_) left = std::min(left, std::max<DWORD>(sleeper->due - now, 1));
  return left;
}

void HeadlessWaits::Advance(DWORD milliseconds) {
  while (milliseconds > 0) {
    const DWORD step = StepWithin(milliseconds);
    desktop_.Advance(step);
    Wake();
    milliseconds -= step;
  }
}

void HeadlessWaits::Wake() {
  const DWORD now = desktop_.Ticks();
  const std::lock_guard<std::mutex> lock(mutex_);
  std::erase_if(sleepers_, [now](Sleeper* sleeper) {
    if (static_cast<std::int32_t>(now - sleeper->due) < 0) return false;
    sleeper->over = true;
    sleeper->event->Nudge();
    return true;
  });
}

}  // namespace lorv
