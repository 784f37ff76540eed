#pragma once

// The plain types that the interface is written in: TCHAR (the 16-bit text unit), LPCTSTR, LPTSTR, _T(),
// BOOL, BYTE, WORD, DWORD, LONG, HINSTANCE, HRESULT, POINT, SIZE, RECT, SYSTEMTIME.
// On Windows they are the system's own; elsewhere types of the same size and meaning.
#if defined(_WIN32)
#include "framework/native/win32/native_types.h"
#else
#include "framework/native/posix/native_types.h"
#endif
