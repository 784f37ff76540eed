#pragma once

// The system's interface for screen readers, with framework/native/native_types.h before it.
#include "framework/native/native_types.h"

// clang-format off
#include <oleacc.h>
// clang-format on
