#pragma once

#include "framework/native/native_types.h"

// The bitmap resources of the test program: number 7 is 2 by 2 pixels, in its upper row red and green, in the
// lower one blue and white. On Windows they are the program's own, elsewhere they are compiled in.
namespace lorv::test {

constexpr unsigned kTestBitmap = 7;

HINSTANCE ModuleWithBitmaps();

}  // namespace lorv::test
