#pragma once

#include "framework/objects/exceptions.h"
#include "framework/text/cstring.h"

// What the exchange says to its user.
namespace lorv {

constexpr LPCTSTR kNoProgram = _T("没有打开 excel 程序!");
constexpr LPCTSTR kGeneralException = _T("General Exception caught.");
constexpr LPCTSTR kCatchAll = _T("Catch-All");

constexpr UINT kPlainBox = 0;
constexpr UINT kForeground = 0x10000;

void ShowUserMessage(const CString& text, const CString& caption = CString(), UINT style = kPlainBox);
// The exception's own text.
void ReportFailure(const CException& failure);

}  // namespace lorv
