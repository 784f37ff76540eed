#pragma once

#include <array>

#include "TEXPRESSCAL/function_table.h"

namespace lorv {

// The built-in functions in the order in which they enter the table.
extern const std::array<CDtaFunction, 28> kFunctionData;

}  // namespace lorv
