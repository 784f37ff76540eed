#pragma once

#include "framework/ports/window_port.h"

// Makes windows of the system and brings them under the framework's procedure before their first message.
// One thread: that of the user interface.
namespace lorv {

class Win32Window;

HWND MakeNativeWindow(const WindowRequest& request);

// Brings a window that somebody else made under the framework's procedure; false for one of another thread.
bool TakeOverWindow(HWND handle, Win32Window& window);
// Gives it its own procedure back; false where other code has subclassed it since.
bool GiveBackWindow(HWND handle, WNDPROC original);

// The kind of a class of the system's; Custom for all others.
WindowKind KindOfClass(const CString& name);

}  // namespace lorv
