#pragma once

#include "framework/ports/window_port.h"

// Makes windows of the system and brings them under the framework's procedure before their first message.
// One thread: that of the user interface.
namespace lorv {

HWND MakeNativeWindow(const WindowRequest& request);

// The kind of a class of the system's; Custom for all others.
WindowKind KindOfClass(const CString& name);

}  // namespace lorv
