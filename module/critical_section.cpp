#include "module/critical_section.h"

// A scope in a critical section. It counts its own entries and leaves as often as it entered, so a function
// may return from anywhere.

TCriticalSectionEx::~TCriticalSectionEx() {
  for (; entries_ > 0; --entries_) section_->Unlock();
}

int TCriticalSectionEx::Lock() {
  // Never waits: the caller looks at the count to see whether it is inside.
  if (section_ != nullptr && section_->TryLock()) ++entries_;
  return entries_;
}
