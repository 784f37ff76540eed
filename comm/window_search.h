#pragma once

#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

namespace lorv {

// What is looked for among the windows of a thread, and what was found.
struct WindowSearch {
  const CString& text;
  HWND found = nullptr;
};

}  // namespace lorv
