#include "spreadsheet/servers/office/office_failure.h"

#include "framework/objects/exceptions.h"
#include "spreadsheet/servers/engine/engine_failure.h"

// Faults of the office as the exceptions that a caller of automation knows: one of its own for a program
// that has gone, which callers take as a reason to connect again, and one with a text for all else.

namespace lorv::office {

void RaiseFault(const OfficeFault& fault, const CString& what) {
  const CString reason(TextView(fault.reason));
  if (fault.gone) {
    // There are no help texts to point at.
    constexpr UINT kNoHelp = 0xFFFFFFFF;
    auto* const failure = new COleDispatchException(_T("电子表格程序已退出，或没有响应。"), kNoHelp, 0);
    failure->m_scError = kGone;
    throw failure;
  }
  CString text = what.IsEmpty() ? CString(_T("电子表格程序无法完成该操作。")) : what;
  if (!reason.IsEmpty()) text += _T("\r\n") + reason;
  engine::Fail(text);
}

}  // namespace lorv::office
