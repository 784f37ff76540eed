#pragma once

#include "framework/text/cstring.h"

// Text of the system's clipboard. It is cut at its first zero unit, as the system counts no length.
// Edges: another program may hold the clipboard for a moment; we try for a while, then answer false or empty.
namespace lorv {

bool HasSystemText();
CString SystemText();
bool SetSystemText(const CString& text);

}  // namespace lorv
