#include "tests/image/bounds/counted_memory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// In front of each block, so that what lies behind is aligned as the system aligns it.
constexpr std::size_t kFront = alignof(std::max_align_t);
static_assert(kFront >= sizeof(std::size_t));

std::atomic<std::int64_t> held{0};
std::atomic<std::int64_t> most{0};

void* Take(std::size_t size) {
  auto* const block = static_cast<unsigned char*>(std::malloc(kFront + size));
  if (block == nullptr) throw std::bad_alloc();
  std::memcpy(block, &size, sizeof(size));
  const std::int64_t now = held += static_cast<std::int64_t>(size);
  std::int64_t before = most;
  while (before < now && !most.compare_exchange_weak(before, now)) {
  }
  return block + kFront;
}

void Give(void* memory) noexcept {
  if (memory == nullptr) return;
  auto* const block = static_cast<unsigned char*>(memory) - kFront;
  std::size_t size = 0;
  std::memcpy(&size, block, sizeof(size));
  held -= static_cast<std::int64_t>(size);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  return Take(size);
}
void* operator new[](std::size_t size) {
  return Take(size);
}
// A sanitizer has answers of its own to these, whose blocks carry no size.
void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
  try {
    return Take(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void* operator new[](std::size_t size, const std::nothrow_t& quiet) noexcept {
  return operator new(size, quiet);
}
void operator delete(void* memory) noexcept {
  Give(memory);
}
void operator delete[](void* memory) noexcept {
  Give(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  Give(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  Give(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*unused*/) noexcept {
  Give(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*unused*/) noexcept {
  Give(memory);
}

namespace lorv::test {

CountedMemory::CountedMemory() : before_(held) {
  most = before_;
}

std::int64_t CountedMemory::Most() const {
  return most - before_;
}

}  // namespace lorv::test
