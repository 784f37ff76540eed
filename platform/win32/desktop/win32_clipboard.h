#pragma once

#include <vector>

#include "framework/ports/transfer_data.h"

// Content of the system's clipboard. A text is cut at its first zero unit, as the system counts no length.
// Edges: another program may hold the clipboard for a moment; we try for a while, then answer false or empty.
namespace lorv {

bool HasSystemText();
CString SystemText();
bool SetSystemText(const CString& text);
// All formats of the content, in place of what is there. False: one of them was refused, or all.
bool SetSystemClipboard(const TransferData& data);
// HTML without the frame that the system's format has around it.
std::vector<BYTE> SystemBytes(const CString& format);

}  // namespace lorv
