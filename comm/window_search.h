#pragma once

#include "framework/cstring.h"
#include "framework/window_types.h"

namespace lorv {

// What is looked for among the windows of a thread, and what was found.
struct WindowSearch {
  const CString& text;
  HWND found = nullptr;
};

}  // namespace lorv
