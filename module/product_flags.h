#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

namespace lorv {

// A failure report goes to the user, not to the log.
constexpr DWORD kShowFailures = 0x1000;

// What the product flags are when nothing sets them.
constexpr int kDefaultProductFlags = 72;

// The flags last read, 0 before the first reading. Tests set it back; nothing else writes it.
int& CachedProductFlags();

}  // namespace lorv

// The product flags: the value "CustomFlag" in section "Product" of sys\product.ini under the suite's root,
// 72 without one.
//
// A value of 1 or more is kept for the life of the process: a later change of the file is not seen. A value
//   of 0 or below is read anew at each call.
// For the user-interface thread.
COMM_LORV_API DWORD GetGlobelInfo();
