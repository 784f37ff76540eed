#pragma once

#include <string>

#include "framework/native/native_types.h"

namespace lorv {

// A path of the library as the system takes it: UTF-8, "/" between folders. A null path is the empty one.
std::string NativePath(LPCTSTR path);

}  // namespace lorv
