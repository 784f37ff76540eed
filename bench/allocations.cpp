#include "bench/allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::uint64_t count = 0;

void* Counted(std::size_t size) {
  ++count;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return Counted(size);
}
void* operator new[](std::size_t size) {
  return Counted(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace lorv::bench {

std::uint64_t Allocations() {
  return count;
}

}  // namespace lorv::bench
