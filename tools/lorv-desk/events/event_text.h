#pragma once

#include "framework/objects/command_target.h"
#include "framework/text/cstring.h"

namespace lorv::tool {

// An event of a table as a trace shows it: the handler's name and its arguments. What a handler may answer
// stands in brackets, as it is when the event comes; an event that the table has none of has its number.
//
//   EventText(event)  gives _T("OnBeforeColUpdate(2, [C30], [0])")
CString EventText(const AFX_EVENT& event);

// Whether the event comes with each painting or move of the mouse, so that a trace would hold nothing else.
bool IsNoise(DISPID event);

}  // namespace lorv::tool
