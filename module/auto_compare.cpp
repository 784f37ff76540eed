#include "module/auto_compare.h"

#include "platform/ports/platform.h"

// Switches and file names of the automatic comparison runs, in which the suite calculates projects without a
// user. Plain variables, set before the run begins; the names lie under the suite's root.

EmDiffNumAutoTestMode CAutoCompareMode::m_emTestMode{};
bool CAutoCompareMode::g_bStartCloudFX = false;
bool CAutoCompareMode::g_AutoCalcAndMultiProc = false;

namespace {

CString SystemFile(LPCTSTR name) {
  return lorv::PortsInForce().suite->RootFolder() + _T("sys\\") + name;
}

std::string NarrowSystemFile(LPCTSTR name) {
  return lorv::PortsInForce().code_page->ToNarrow(SystemFile(name).View());
}

}  // namespace

void CAutoCompareMode::GetAutoCalcProPath(std::string& path) {
  path = NarrowSystemFile(_T("autocalcproject.txt"));
}

void CAutoCompareMode::GetFinishedAutoCalcProPath(std::string& path) {
  path = NarrowSystemFile(_T("autocalcprojectOK.txt"));
}

void CAutoCompareMode::GetAutoCalcSettingPath(CString& path) {
  path = SystemFile(_T("autocalcSetting.ini"));
}
