#include <algorithm>
#include <array>

#include "framework/values/com_error.h"

// Texts of failure codes where the system has none for them: short Chinese sentences, as in the failure
// objects. What is not listed has the empty text, and the caller prints the number.

namespace lorv {
namespace {

struct CodeText {
  HRESULT code;
  LPCTSTR text;
};

constexpr std::array kTexts = {
    CodeText{S_OK, _T("操作成功完成。")},
    CodeText{E_NOTIMPL, _T("不支持此操作。")},
    CodeText{E_NOINTERFACE, _T("不支持此接口。")},
    CodeText{E_POINTER, _T("指针无效。")},
    CodeText{E_ABORT, _T("操作被中止。")},
    CodeText{E_FAIL, _T("未指定的错误。")},
    CodeText{E_UNEXPECTED, _T("灾难性故障。")},
    CodeText{E_ACCESSDENIED, _T("拒绝访问。")},
    CodeText{E_OUTOFMEMORY, _T("内存不足。")},
    CodeText{E_INVALIDARG, _T("参数错误。")},
    CodeText{DISP_E_UNKNOWNINTERFACE, _T("未知接口。")},
    CodeText{DISP_E_MEMBERNOTFOUND, _T("找不到成员。")},
    CodeText{DISP_E_PARAMNOTFOUND, _T("找不到参数。")},
    CodeText{DISP_E_TYPEMISMATCH, _T("类型不匹配。")},
    CodeText{DISP_E_UNKNOWNNAME, _T("未知名称。")},
    CodeText{DISP_E_BADVARTYPE, _T("变量类型错误。")},
    CodeText{DISP_E_EXCEPTION, _T("发生意外。")},
    CodeText{DISP_E_OVERFLOW, _T("超出当前范围。")},
    CodeText{DISP_E_BADINDEX, _T("索引无效。")},
    CodeText{DISP_E_BADPARAMCOUNT, _T("参数个数错误。")},
};

}  // namespace

CString SystemErrorText(HRESULT code) {
  const auto row = std::find_if(kTexts.begin(), kTexts.end(), [=](const auto& r) { return r.code == code; });
  return row == kTexts.end() ? CString() : CString(row->text);
}

}  // namespace lorv
