#include "framework/ports/wait_clock.h"

#include <atomic>

// Apart from the desktop's own clock, which only the thread of the windows moves: a thread that waits here
// is another thread, while that one works.
namespace lorv {
namespace {

class SystemWaitClock final : public WaitClock {
 public:
  bool WaitFor(CEvent& event, DWORD milliseconds) override { return event.Lock(milliseconds) != 0; }
};

std::atomic<WaitClock*> in_force{nullptr};

}  // namespace

WaitClock& WaitClockInForce() {
  static SystemWaitClock own;
  WaitClock* const other = in_force.load(std::memory_order_acquire);
  return other != nullptr ? *other : own;
}

ScopedWaitClock::ScopedWaitClock(WaitClock& clock) : before_(in_force.exchange(&clock)) {}

ScopedWaitClock::~ScopedWaitClock() {
  in_force.store(before_);
}

}  // namespace lorv
