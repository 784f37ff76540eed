#pragma once

namespace lorv::test {

// Builds that check every access (sanitizers, iterators) work one case in `share` of what the plain build
// does: they take many times as long.
constexpr int CheckedShare([[maybe_unused]] int share) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(LORV_HOSTILE)
  return share;
#else
  return 1;
#endif
}

}  // namespace lorv::test
