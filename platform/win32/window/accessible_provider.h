#pragma once

#include <memory>

#include "framework/ports/accessible_port.h"
#include "platform/win32/window/accessible_headers.h"

// A window's tree as the system's screen readers ask for it: an object of the system's interface for each of
// ours.
//
// Child numbers above 0 count children from 1, those below 0 are the negatives of AccessibleObject::Number:
// events carry the latter. An object whose window is gone answers CO_E_OBJNOTCONNECTED. One thread: that of
// the user interface; the system carries questions of other programs there.
namespace lorv {

// One reference, the caller's; null for null.
IAccessible* MakeAccessible(const std::shared_ptr<AccessibleObject>& object);

// The answer to WM_GETOBJECT: 0 leaves it to the system, whose own controls it knows best.
LRESULT AnswerGetObject(HWND window, WPARAM w, LPARAM l);

void ReportNativeReaders(HWND window, AccessEvent event, std::int64_t number);

}  // namespace lorv
