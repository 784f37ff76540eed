#include <set>

#include "comm/AdLorvComm.h"
#include "framework/windows/window.h"
#include "module/scope_markers.h"

// Having the application's open panels refresh themselves.

namespace {

constexpr UINT kRefresh = 1128;
constexpr WPARAM kClosedByProgram = 16;

void PostRefresh(const CWnd* panel) {
  if (panel != nullptr) panel->PostMessage(kRefresh);
}

// The class may be found again after a window of it has gone: there may be several. One that is found a
// second time has refused.
void CloseRestoreDialogs() {
  std::set<HWND> asked;
  for (;;) {
    const HWND dialog = CAdLorvComm::IsWindowClassExist(_T("CDlgReback"));
    if (dialog == nullptr || !asked.insert(dialog).second) return;
    lorv::DesktopInForce().Send(dialog, WM_CLOSE, kClosedByProgram, static_cast<LPARAM>(kClosedByProgram));
  }
}

}  // namespace

bool CAdLorvComm::RefreshDefNum() {
  if (TOpenProject::IsOpenProject()) return false;
  // Posted, so that no panel works before the caller is through.
  PostRefresh(GetDrawControlBar(_T("布置实体")));
  PostRefresh(GetWindowExist(_T("项目列表区")));
  CloseWindow(false);
  CloseRestoreDialogs();
  return false;
}

void CAdLorvComm::RefeshDlgHLCheck() {
  PostRefresh(GetWindowExist(_T("回路核查")));
}
