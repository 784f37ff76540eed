#pragma once

// The system's interface for screen readers, behind the one door of all Windows headers.
#include "framework/native/native_types.h"

// clang-format off
#include <oleacc.h>
// clang-format on
