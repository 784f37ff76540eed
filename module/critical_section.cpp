#include "module/critical_section.h"

TCriticalSectionEx::~TCriticalSectionEx() {
  for (; entries_ > 0; --entries_) section_->Unlock();
}

int TCriticalSectionEx::Lock() {
  if (section_ != nullptr && section_->TryLock()) ++entries_;
  return entries_;
}
