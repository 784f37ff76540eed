#pragma once

#include <cstdint>

#include "framework/native/export.h"

// Types that the Windows header gives on Windows, at the same sizes. Text units are char16_t: wchar_t has
// 32 bits here.
using TCHAR = char16_t;
using WCHAR = char16_t;
using LPTSTR = TCHAR*;
using LPCTSTR = const TCHAR*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;

#define LORV_WIDE_LITERAL(text) u##text
#define _T(text) LORV_WIDE_LITERAL(text)

// The spelling that the interface uses for a 64-bit integer.
using __int64 = long long;

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using HRESULT = std::int32_t;
using HINSTANCE = void*;
using HMODULE = void*;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

struct POINT {
  LONG x;
  LONG y;
};

struct SIZE {
  LONG cx;
  LONG cy;
};

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

using LPPOINT = POINT*;
using LPSIZE = SIZE*;
using LPRECT = RECT*;
using LPCRECT = const RECT*;

// "Without limit" for waits, in milliseconds.
constexpr DWORD INFINITE = 0xFFFFFFFF;

struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};

// The C runtime's names for lorv::ReadReal and lorv::ReadInteger (framework/text/number_text.h); a null
// pointer reads as the empty text.
COMM_LORV_API double _wtof(LPCTSTR text);
COMM_LORV_API int _wtoi(LPCTSTR text);

#include "framework/native/posix/automation.h"
