#pragma once

#include <cstddef>

namespace lorv {

// Sizes of preallocated memory, and the limits up to which a fast path serves small cases: no result depends
// on them, only the time. A hostile build (CMake option LORV_HOSTILE) makes them tiny, so that ordinary
// tests also take the general path behind each fast one.
#if defined(LORV_HOSTILE)
constexpr std::size_t WorkingSize(std::size_t /*usual*/, std::size_t tiny) {
  return tiny;
}
#else
constexpr std::size_t WorkingSize(std::size_t usual, std::size_t /*tiny*/) {
  return usual;
}
#endif

}  // namespace lorv
