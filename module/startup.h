#pragma once

#include <vector>

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// The library as a module of its process: attached when it is loaded, detached when it goes.
//
// Attaching keeps the module's handle and enters the module in the list that the framework searches for
//   resources. Nothing has to be called by users: the system's loader does it.
namespace lorv {

// 1, or 0 when the list cannot take the module; the load then fails.
int AttachModule(HINSTANCE module);
void DetachModule();

// The library's own module; null before attaching.
COMM_LORV_API HINSTANCE OwnModule();

// Modules to search for resources, the latest first.
COMM_LORV_API std::vector<HINSTANCE> ResourceModules();

}  // namespace lorv
