#pragma once

// The shell's part of the Windows headers, behind the one door of all.
#include "framework/native/native_types.h"

// clang-format off
#include <shellapi.h>
#include <shlobj.h>
// clang-format on
