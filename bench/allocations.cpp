#include "bench/allocations.h"

#include <cstdlib>
#include <new>

// The counting allocator of a benchmark: replaces the global operators of the program that links it.

namespace {

std::uint64_t count = 0;

void* Counted(std::size_t size) {
  ++count;
  // A request of no bytes gets an address of its own, as the language asks for; malloc may give null there.
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
