#pragma once

#include "framework/native/native_types.h"

namespace lorv {

// One object for each thread that asks, ended with its thread or with this.
//
// The system's own storage of threads stands behind it, not thread_local: the C++ library for Windows may
// give the memory of a thread's variables back before it runs their destructors, and a painting thread that
// had measured a text then crashed at its end. Any thread may ask; what it gets is its own. This must outlive
// the threads that use what they got.
template <class T>
class ThreadOwned {
 public:
  ThreadOwned() : slot_(FlsAlloc(&End)) {}
  ThreadOwned(const ThreadOwned&) = delete;
  ThreadOwned& operator=(const ThreadOwned&) = delete;
  ~ThreadOwned() { FlsFree(slot_); }

  T& Here() const {
    auto* own = static_cast<T*>(FlsGetValue(slot_));
    if (own == nullptr) {
      own = new T;
      FlsSetValue(slot_, own);
    }
    return *own;
  }

 private:
  static void CALLBACK End(void* own) { delete static_cast<T*>(own); }

  DWORD slot_;
};

}  // namespace lorv
