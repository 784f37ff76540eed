#pragma once

#include "framework/objects/exceptions.h"
#include "framework/values/com_error.h"

// What a report says about a failure, in the user's words.
//
// Edges: a text of 260 units or more is cut at 259.
// Result: the message; empty where a failure says nothing. Texts and automation failures stay the caller's.
namespace lorv {

// By kind: a lack of memory and the causes of file failures have texts of their own, everything else
// speaks for itself. The failure object is deleted. A null pointer stands for something unknown.
CString MessageOf(CException* caught);

// The description that came with an automation failure. A null pointer gives no text.
CString MessageOf(const _com_error* caught);

CString MessageOf(LPCTSTR text);

}  // namespace lorv
