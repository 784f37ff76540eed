#include "framework/objects/event.h"

#include <chrono>

// The state changes under the mutex only, and every change wakes all waiters: one that finds it not
// signalled any more waits again.

BOOL CEvent::SetEvent() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    signalled_ = true;
  }
  changed_.notify_all();
  return TRUE;
}

BOOL CEvent::ResetEvent() {
  const std::lock_guard<std::mutex> lock(mutex_);
  signalled_ = false;
  return TRUE;
}

bool CEvent::Take() {
  const bool taken = signalled_;
  if (!manual_) signalled_ = false;
  return taken;
}

BOOL CEvent::Lock(DWORD timeout) {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto signalled = [this] { return signalled_; };
  if (timeout == INFINITE) {
    changed_.wait(lock, signalled);
  } else {
    // By the system's clock in the sense of the condition variable: the thread sanitizer of gcc 12 does not
    // see waits by the steady one.
    changed_.wait_until(lock, std::chrono::system_clock::now() + std::chrono::milliseconds(timeout),
                        signalled);
  }
  return Take() ? TRUE : FALSE;
}

bool CEvent::WaitUntil(const std::function<bool()>& over) {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [&] { return signalled_ || over(); });
  return Take();
}

void CEvent::Nudge() {
  // Under the mutex: a waiter between its question and its sleep would miss it.
  const std::lock_guard<std::mutex> lock(mutex_);
  changed_.notify_all();
}
