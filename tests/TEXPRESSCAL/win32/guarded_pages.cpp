#include "tests/TEXPRESSCAL/guarded_pages.h"

#include <windows.h>

#include <new>

namespace lorv::test {

GuardedPages::GuardedPages() {
  void* const memory = VirtualAlloc(nullptr, kBytes + kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  DWORD before = 0;
  if (memory == nullptr ||
      VirtualProtect(static_cast<char*>(memory) + kBytes, kPage, PAGE_NOACCESS, &before) == 0)
    throw std::bad_alloc();
  units_ = static_cast<TCHAR*>(memory);
}

GuardedPages::~GuardedPages() {
  VirtualFree(units_, 0, MEM_RELEASE);
}

}  // namespace lorv::test
