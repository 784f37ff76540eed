#pragma once

#include <cstddef>

namespace lorv {

// Sizes of memory that lies ready and of ways that serve small cases: no outcome depends on them, only the
// time. A hostile build (CMake option LORV_HOSTILE) makes them tiny, so that ordinary tests take every way
// behind the ready one.
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
