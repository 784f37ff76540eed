#pragma once

#include <atomic>
#include <mutex>
#include <thread>

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// What a thread can wait for.
class COMM_LORV_API CSyncObject {
 public:
  virtual ~CSyncObject() = default;
  // Milliseconds; 0 does not wait at all. True: entered.
  virtual BOOL Lock(DWORD timeout = INFINITE) = 0;
  virtual BOOL Unlock() = 0;
};

// A section that one thread at a time is in. The thread inside may enter again; it leaves as often as it
// entered.
//
// Result: Lock with a limit gives false when the time has run out. Unlock by a thread that is not inside
//   gives false and changes nothing.
// Any thread may call. The object must outlive every entry.
//
//   CCriticalSection section;  section.Lock(0)  gives TRUE; on another thread it then gives FALSE
class COMM_LORV_API CCriticalSection : public CSyncObject {
 public:
  CCriticalSection() = default;
  CCriticalSection(const CCriticalSection&) = delete;
  CCriticalSection& operator=(const CCriticalSection&) = delete;

  BOOL Lock(DWORD timeout = INFINITE) override;
  BOOL Unlock() override;
  BOOL TryLock() { return Lock(0); }

 private:
  bool Enter(DWORD timeout);

  std::timed_mutex mutex_;
  std::atomic<std::thread::id> owner_;
  int entries_ = 0;  // touched by the owner only
};

// Enters a section for a scope.
//
// Edges: without an object Lock gives false. A Lock while locked gives true and enters no further, so one
//   Unlock always leaves.
// The object locked is not owned and must outlive this one. Belongs to one thread.
//
//   CSingleLock lock(&section, TRUE);  lock.IsLocked()  gives TRUE
class COMM_LORV_API CSingleLock {
 public:
  explicit CSingleLock(CSyncObject* object, BOOL initial_lock = FALSE);
  ~CSingleLock() { Unlock(); }
  CSingleLock(const CSingleLock&) = delete;
  CSingleLock& operator=(const CSingleLock&) = delete;

  BOOL Lock(DWORD timeout = INFINITE);
  // False if it was not locked.
  BOOL Unlock();
  BOOL IsLocked() const { return locked_; }

 private:
  CSyncObject* object_;
  BOOL locked_ = FALSE;
};
