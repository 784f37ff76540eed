#pragma once

// The shell's part of the Windows headers, with framework/native/native_types.h before it.
#include "framework/native/native_types.h"

// clang-format off
#include <shellapi.h>
#include <shlobj.h>
// clang-format on
