#include "framework/objects/lock.h"

#include <chrono>

// Critical sections that the same thread may enter again, and the scope that holds one. The mutex is a timed
// one, as callers give a time to wait; owner and count stand beside it because a recursive mutex cannot say
// who holds it, and Unlock by another thread must be refused.

bool CCriticalSection::Enter(DWORD timeout) {
  if (timeout == 0) return mutex_.try_lock();
  if (timeout != INFINITE) return mutex_.try_lock_for(std::chrono::milliseconds(timeout));
  mutex_.lock();
  return true;
}

BOOL CCriticalSection::Lock(DWORD timeout) {
  const auto self = std::this_thread::get_id();
  // Only this thread can have put its own id there, so no other store can be missed.
  if (owner_.load(std::memory_order_relaxed) == self) {
    ++entries_;
    return TRUE;
  }
  if (!Enter(timeout)) return FALSE;
  owner_.store(self, std::memory_order_relaxed);
  entries_ = 1;
  return TRUE;
}

BOOL CCriticalSection::Unlock() {
  // Undefined in the framework; here the lock of the thread inside stays whole.
  if (owner_.load(std::memory_order_relaxed) != std::this_thread::get_id()) return FALSE;
  if (--entries_ == 0) {
    // Before the mutex goes: behind it the next owner may have written its own id.
    owner_.store(std::thread::id(), std::memory_order_relaxed);
    mutex_.unlock();
  }
  return TRUE;
}

CSingleLock::CSingleLock(CSyncObject* object, BOOL initial_lock) : object_(object) {
  if (initial_lock) Lock();
}

BOOL CSingleLock::Lock(DWORD timeout) {
  // Entered once only, as the one Unlock of the destructor must let it go.
  if (object_ != nullptr && !locked_) locked_ = object_->Lock(timeout);
  return locked_;
}

BOOL CSingleLock::Unlock() {
  if (!locked_) return FALSE;
  locked_ = FALSE;
  return object_->Unlock();
}
