#pragma once

#include "framework/objects/event.h"

// The clock by which threads wait: the system's, or one that a test turns by hand.
namespace lorv {

class COMM_LORV_API WaitClock {
 public:
  WaitClock() = default;
  WaitClock(const WaitClock&) = delete;
  WaitClock& operator=(const WaitClock&) = delete;
  virtual ~WaitClock() = default;

  // Waits that long; true if the event is signalled before. Any thread.
  virtual bool WaitFor(CEvent& event, DWORD milliseconds) = 0;
};

// That of the innermost scope, else the system's. Any thread.
COMM_LORV_API WaitClock& WaitClockInForce();

// Puts a clock in force until its end; no thread may wait by it then.
class COMM_LORV_API ScopedWaitClock {
 public:
  explicit ScopedWaitClock(WaitClock& clock);
  ScopedWaitClock(const ScopedWaitClock&) = delete;
  ScopedWaitClock& operator=(const ScopedWaitClock&) = delete;
  ~ScopedWaitClock();

 private:
  WaitClock* before_;
};

}  // namespace lorv
