#include "tests/TEXPRESSCAL/guarded_pages.h"

#include <sys/mman.h>

#include <new>

namespace lorv::test {

GuardedPages::GuardedPages() {
  void* const memory =
      mmap(nullptr, kBytes + kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED || mprotect(static_cast<char*>(memory) + kBytes, kPage, PROT_NONE) != 0)
    throw std::bad_alloc();
  units_ = static_cast<TCHAR*>(memory);
}

GuardedPages::~GuardedPages() {
  munmap(units_, kBytes + kPage);
}

}  // namespace lorv::test
