#pragma once

// The only place that includes the Windows header: every file that needs it includes this one, so that its
// macros are dealt with once.
#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
// The order matters: the window header comes first.
// clang-format off
#include <windows.h>
#include <tchar.h>
#include <ole2.h>
#include <oleauto.h>
// clang-format on

// The library has its own classes over the system's tagged values, whose texts are the same on every system;
// the compiler's header of the same class names stays out.
// NOLINTBEGIN(bugprone-reserved-identifier): the names are that header's own guards
#define _INC_COMUTIL
#define _INC_COMDEF
// NOLINTEND(bugprone-reserved-identifier)
