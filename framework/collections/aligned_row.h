#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace lorv {

// A vector that begins where a line of the processor's cache does: what is written as a whole register and
// read singly again must not lie across two lines, and loops over it take each line once.
template <class T>
struct LineAllocator {
  using value_type = T;
  static constexpr std::align_val_t kLine{64};

  LineAllocator() = default;
  template <class U>
  LineAllocator(const LineAllocator<U>&) {}

  T* allocate(std::size_t count) { return static_cast<T*>(::operator new(count * sizeof(T), kLine)); }
  void deallocate(T* first, std::size_t) { ::operator delete(first, kLine); }

  friend bool operator==(LineAllocator, LineAllocator) { return true; }
};

template <class T>
using AlignedRow = std::vector<T, LineAllocator<T>>;

}  // namespace lorv
