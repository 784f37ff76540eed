#include "report/dialogs/dialog_forms.h"

// The dialogs of the failure report as data, in dialog units. They are the same on every desktop and need no
// resources, so a report can be shown by a library that was loaded on its own.

namespace lorv {
namespace {

constexpr DWORD kText = WS_TABSTOP | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL;
constexpr DWORD kDefault = WS_TABSTOP | BS_DEFPUSHBUTTON;
constexpr DWORD kButton = WS_TABSTOP | BS_PUSHBUTTON;
constexpr UINT kNoId = 0xFFFF;
constexpr LPCTSTR kFont = _T("宋体");
constexpr int kPoints = 9;

const DialogItem kFailureItems[] = {
    {WindowKind::Edit, kReportTextId, 7, 7, 233, 88, kText | ES_READONLY, _T("")},
    {WindowKind::Button, IDOK, 76, 97, 50, 14, kDefault, _T("确定")},
    {WindowKind::Button, kPrintId, 133, 97, 50, 14, kButton, _T("打印")},
    {WindowKind::Button, kSendId, 190, 97, 50, 14, kButton, _T("发送")},
};

const DialogItem kDescriptionItems[] = {
    {WindowKind::Static, kNoId, 7, 7, 221, 10, 0, _T("使用***出错。")},
    {WindowKind::Static, kNoId, 7, 20, 221, 10, 0, _T("您的热心对我们解决产品的错误非常有好处！")},
    {WindowKind::Static, kNoId, 7, 33, 221, 10, 0, _T("错误附加描述：")},
    {WindowKind::Edit, kDescriptionId, 7, 46, 221, 53, kText | ES_WANTRETURN, _T("")},
    {WindowKind::Button, IDOK, 121, 105, 50, 14, kDefault, _T("确定")},
    {WindowKind::Button, IDCANCEL, 178, 105, 50, 14, kButton, _T("取消")},
};

const DialogItem kFileSelectItems[] = {
    {WindowKind::List, kNamesId, 7, 7, 233, 159,
     WS_TABSTOP | WS_BORDER | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, _T("")},
    {WindowKind::Button, IDCANCEL, 133, 170, 50, 14, kButton, _T("取 消")},
    {WindowKind::Button, IDOK, 190, 170, 50, 14, kDefault, _T("确 定")},
};

}  // namespace

const DialogTemplate kFailureForm = {1000, _T("错误提示"), 247, 118, kFont, kPoints, kFailureItems};
const DialogTemplate kDescriptionForm = {1001, _T("附加提示"), 235, 126, kFont, kPoints, kDescriptionItems};
const DialogTemplate kFileSelectForm = {1002, _T("文件选择"), 247, 191, kFont, kPoints, kFileSelectItems};

}  // namespace lorv
