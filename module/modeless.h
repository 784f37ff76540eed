#pragma once

#include "framework/native/export.h"

// Whether the program may have windows of its own that get messages beside the one that is up: a host asks
// before it lets its tool windows take input. While a foreign library's dialog is up it may not.
//
// Calls count: as many that allow it again as have forbidden it.
// One thread: that of the user interface.
namespace lorv {

COMM_LORV_API void EnableModeless(bool enable);
COMM_LORV_API bool IsModeless();

}  // namespace lorv
