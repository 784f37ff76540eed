#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

#include "framework/objects/lock.h"

// What one thread signals and others wait for. A manual one stays signalled until it is reset, any other lets
// one waiter through.
//
// Any thread may call; the object must outlive every wait.
//
//   CEvent woken(FALSE, TRUE);  woken.SetEvent();  woken.Lock(0)  gives TRUE
class COMM_LORV_API CEvent : public CSyncObject {
 public:
  explicit CEvent(BOOL signalled = FALSE, BOOL manual_reset = FALSE)
      : manual_(manual_reset != 0), signalled_(signalled != 0) {}
  CEvent(const CEvent&) = delete;
  CEvent& operator=(const CEvent&) = delete;

  BOOL SetEvent();
  BOOL ResetEvent();
  // False when the milliseconds have run out.
  BOOL Lock(DWORD timeout = INFINITE) override;
  BOOL Unlock() override { return TRUE; }

  // For clocks that are not the system's: waits until it is signalled (true) or `over` says that the time has
  // run out, which is asked at once and after each Nudge. `over` must not call this object.
  bool WaitUntil(const std::function<bool()>& over);
  void Nudge();

 private:
  bool Take();

  std::mutex mutex_;
  std::condition_variable changed_;
  bool manual_;
  bool signalled_;
};
