#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "framework/ports/wait_clock.h"

namespace lorv {

class HeadlessDesktop;

// The clock of a headless desktop for threads that wait: their time comes when the desktop's clock is moved
// by Advance of this object.
//
// Threads: WaitFor is for any; the rest is for that of the desktop. No thread may wait any more when the
//   object is destroyed.
//
//   HeadlessWaits waits(desktop);  ScopedWaitClock scope(waits);  ...  waits.AwaitSleepers(1);
//   waits.Advance(100);
class COMM_LORV_API HeadlessWaits : public WaitClock {
 public:
  explicit HeadlessWaits(HeadlessDesktop& desktop) : desktop_(desktop) {}

  bool WaitFor(CEvent& event, DWORD milliseconds) override;

  // Threads that wait; those whose time has come no longer count once Advance is back.
  std::size_t Sleepers() const;
  // Waits, by the system's clock, until there are `count`; false after ten seconds.
  bool AwaitSleepers(std::size_t count);
  // Moves the desktop's clock; its timers come due one by one.
  void Advance(DWORD milliseconds);

 private:
  struct Sleeper {
    CEvent* event;
    DWORD due;
    std::atomic<bool> over{false};
  };
  DWORD StepWithin(DWORD left) const;
  void Wake();

  HeadlessDesktop& desktop_;
  mutable std::mutex mutex_;
  std::vector<Sleeper*> sleepers_;
  std::condition_variable changed_;
};

}  // namespace lorv
