#pragma once

#include "framework/native/native_types.h"

// The words of the window protocol: handles, messages with their structures, and the numbers of messages,
// styles, keys and flags. On Windows they are the system's own; elsewhere the same names with the same sizes
// and values, so that a window class is written once.
//
// A handle is an identifier and is never dereferenced; that of a window that is gone identifies nothing.
#if !defined(_WIN32)
#include "framework/native/posix/window_types.h"
#endif

namespace lorv {

// The flags but for some of them, whatever sign the system's constants have.
constexpr DWORD Without(DWORD flags, DWORD gone) {
  return flags & ~gone;
}

}  // namespace lorv
