#pragma once

#include <memory>

#include "framework/native/window_types.h"

// The living windows of ours by their handles. Any thread.
namespace lorv {

class Win32Window;

void RegisterWindow(HWND handle, const std::shared_ptr<Win32Window>& window);
void ForgetWindow(HWND handle);
std::shared_ptr<Win32Window> RegisteredWindow(HWND handle);  // null: not one of ours

}  // namespace lorv
