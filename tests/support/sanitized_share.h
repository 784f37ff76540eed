#pragma once

namespace lorv::test {

// The build with sanitizers works one case in `share` of what the plain build does: it takes many times as
// long.
constexpr int SanitizedShare([[maybe_unused]] int share) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return share;
#else
  return 1;
#endif
}

}  // namespace lorv::test
