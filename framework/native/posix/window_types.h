#pragma once

// What the Windows header says about windows, where there is no such header. Included by
// framework/native/window_types.h; the numbers stand in window_number_table.inc.

#include <cstdint>

#include "framework/native/posix/native_types.h"

// Each kind of handle is a type of its own, so that a menu cannot pass for a window.
#define LORV_HANDLE(name) using name = struct name##__*
LORV_HANDLE(HWND);
LORV_HANDLE(HMENU);
LORV_HANDLE(HKL);
LORV_HANDLE(HCURSOR);
LORV_HANDLE(HDC);
LORV_HANDLE(HFONT);
LORV_HANDLE(HBITMAP);
LORV_HANDLE(HBRUSH);
LORV_HANDLE(HICON);
#undef LORV_HANDLE

using HANDLE = void*;
using LPVOID = void*;
using ATOM = WORD;
using SHORT = std::int16_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using INT_PTR = std::intptr_t;
using COLORREF = DWORD;

// NOLINTBEGIN(bugprone-macro-parentheses): a row of the table is a type, a name and a number
#define LORV_NUMBER(type, name, value) inline constexpr type name = value;
#include "framework/native/posix/window_number_table.inc"
#undef LORV_NUMBER
// NOLINTEND(bugprone-macro-parentheses)

template <class Number>
constexpr WORD LOWORD(Number pair) {
  return static_cast<WORD>(static_cast<std::uintptr_t>(pair) & 0xFFFFU);
}
template <class Number>
constexpr WORD HIWORD(Number pair) {
  return static_cast<WORD>((static_cast<std::uintptr_t>(pair) >> 16U) & 0xFFFFU);
}
constexpr LONG MAKELONG(std::intptr_t low, std::intptr_t high) {
  return static_cast<LONG>(static_cast<DWORD>(LOWORD(low)) | (static_cast<DWORD>(LOWORD(high)) << 16U));
}
constexpr WPARAM MAKEWPARAM(std::intptr_t low, std::intptr_t high) {
  return static_cast<DWORD>(MAKELONG(low, high));
}
constexpr LPARAM MAKELPARAM(std::intptr_t low, std::intptr_t high) {
  return static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high)));
}

// Colours are 0x00BBGGRR.
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
  return (red & 0xFFU) | ((green & 0xFFU) << 8U) | ((blue & 0xFFU) << 16U);
}
constexpr BYTE GetRValue(COLORREF colour) {
  return static_cast<BYTE>(colour & 0xFFU);
}
constexpr BYTE GetGValue(COLORREF colour) {
  return static_cast<BYTE>((colour >> 8U) & 0xFFU);
}
constexpr BYTE GetBValue(COLORREF colour) {
  return static_cast<BYTE>((colour >> 16U) & 0xFFU);
}

struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;
  POINT pt;
};
using LPMSG = MSG*;

struct CREATESTRUCT {
  LPVOID lpCreateParams;
  HINSTANCE hInstance;
  HMENU hMenu;
  HWND hwndParent;
  int cy;
  int cx;
  int y;
  int x;
  LONG style;
  LPCTSTR lpszName;
  LPCTSTR lpszClass;
  DWORD dwExStyle;
};
using LPCREATESTRUCT = CREATESTRUCT*;

struct NMHDR {
  HWND hwndFrom;
  UINT_PTR idFrom;
  UINT code;
};
using LPNMHDR = NMHDR*;

struct SCROLLINFO {
  UINT cbSize;
  UINT fMask;
  int nMin;
  int nMax;
  UINT nPage;
  int nPos;
  int nTrackPos;
};
using LPSCROLLINFO = SCROLLINFO*;

constexpr int LF_FACESIZE = 32;

struct LOGFONT {
  LONG lfHeight;  // below 0: the letters' height, above: the line's, in pixels
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  TCHAR lfFaceName[LF_FACESIZE];
};

struct TEXTMETRIC {
  LONG tmHeight;
  LONG tmAscent;
  LONG tmDescent;
  LONG tmInternalLeading;
  LONG tmExternalLeading;
  LONG tmAveCharWidth;
  LONG tmMaxCharWidth;
  LONG tmWeight;
  LONG tmOverhang;
  LONG tmDigitizedAspectX;
  LONG tmDigitizedAspectY;
  TCHAR tmFirstChar;
  TCHAR tmLastChar;
  TCHAR tmDefaultChar;
  TCHAR tmBreakChar;
  BYTE tmItalic;
  BYTE tmUnderlined;
  BYTE tmStruckOut;
  BYTE tmPitchAndFamily;
  BYTE tmCharSet;
};

struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
};

struct WINDOWPOS {
  HWND hwnd;
  HWND hwndInsertAfter;
  int x;
  int y;
  int cx;
  int cy;
  UINT flags;
};

struct MINMAXINFO {
  POINT ptReserved;
  POINT ptMaxSize;
  POINT ptMaxPosition;
  POINT ptMinTrackSize;
  POINT ptMaxTrackSize;
};

struct DRAWITEMSTRUCT {
  UINT CtlType;
  UINT CtlID;
  UINT itemID;
  UINT itemAction;
  UINT itemState;
  HWND hwndItem;
  HDC hDC;
  RECT rcItem;
  UINT_PTR itemData;
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;
