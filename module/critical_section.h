#pragma once

#include "framework/native/export.h"
#include "framework/objects/lock.h"

// Holds a critical section that it entered without waiting, and leaves it at its end as often as it entered.
//
// A null section is never entered. The section is not owned and must outlive this object, which belongs to
//   one thread.
//
//   TCriticalSectionEx guard(&section);  if (guard.Lock() == 0) return;  // another thread is inside
class COMM_LORV_API TCriticalSectionEx {
 public:
  explicit TCriticalSectionEx(CCriticalSection* section) : section_(section) {}
  virtual ~TCriticalSectionEx();
  TCriticalSectionEx(const TCriticalSectionEx&) = delete;
  TCriticalSectionEx& operator=(const TCriticalSectionEx&) = delete;

  // Tries to enter. Result: how often this object is inside; 0 means that another thread holds the section.
  int Lock();
  // For a CSingleLock.
  CCriticalSection* GetSection() const { return section_; }

 private:
  CCriticalSection* section_;
  int entries_ = 0;
};
