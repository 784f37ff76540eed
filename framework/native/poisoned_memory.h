#pragma once

#include <cstddef>

// Marks memory that a structure keeps but that holds no live object, so that the address sanitizer reports
// an access to it as it does for freed memory. In other builds the functions do nothing.
#if defined(__SANITIZE_ADDRESS__)
#define LORV_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LORV_ADDRESS_SANITIZER
#endif
#endif

#ifdef LORV_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace lorv {

inline void PoisonMemory([[maybe_unused]] const void* at, [[maybe_unused]] std::size_t bytes) {
#ifdef LORV_ADDRESS_SANITIZER
  __asan_poison_memory_region(at, bytes);
#endif
}

inline void UnpoisonMemory([[maybe_unused]] const void* at, [[maybe_unused]] std::size_t bytes) {
#ifdef LORV_ADDRESS_SANITIZER
  __asan_unpoison_memory_region(at, bytes);
#endif
}

inline bool IsPoisoned([[maybe_unused]] const void* at) {
#ifdef LORV_ADDRESS_SANITIZER
  return __asan_address_is_poisoned(at) != 0;
#else
  return false;
#endif
}

}  // namespace lorv
