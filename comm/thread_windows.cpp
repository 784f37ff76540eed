#include "comm/AdLorvComm.h"
#include "comm/comm_limits.h"
#include "comm/window_search.h"
#include "framework/ports/desktop_port.h"
#include "framework/windows/controls.h"

// Looking for windows among those of the thread, and closing them. The callbacks are part of the interface,
// so a search travels as a number that is its address. A step may run handlers that end windows or make new
// ones: every window is asked for by its handle again.

namespace {

constexpr int kGoOn = 1;
constexpr int kStop = 0;

constexpr LPCTSTR kDialogClass = _T("#32770");
constexpr LPCTSTR kSettingsTitle = _T("工程设置");
// Both parameters of the WM_CLOSE that the suite's dialogs take for "closed by the program".
constexpr int kClosedByProgram = 16;

lorv::WindowSearch* SearchAt(__int64 address) {
  return reinterpret_cast<lorv::WindowSearch*>(static_cast<UINT_PTR>(address));
}

__int64 AddressOf(lorv::WindowSearch& search) {
  return static_cast<__int64>(reinterpret_cast<UINT_PTR>(&search));
}

bool IsDialog(HWND window) {
  return lorv::PeerOf(window)->ClassName() == kDialogClass;
}

CString TitleOf(HWND window) {
  return lorv::PeerOf(window)->Text();
}

bool Contains(const CString& text, LPCTSTR part) {
  return text.Find(part) >= 0;
}

// Goes through the windows of the thread, the topmost first. A step may end windows: those are passed over.
int WalkWindows(int (*step)(HWND, __int64), __int64 argument) {
  const lorv::Desktop* const desktop = lorv::DesktopIfAny();
  if (desktop == nullptr) return kStop;
  int answer = kStop;
  for (const HWND window : desktop->Windows()) {
    if (!lorv::PeerOf(window)->Exists()) continue;
    answer = step(window, argument);
    // A callback that stops the walk also gives its answer, as in the system's enumeration.
    if (answer == kStop) return kStop;
  }
  return answer;
}

HWND BarWith(HWND frame, LPCTSTR text) {
  for (const HWND bar : lorv::PeerOf(frame)->Children()) {
    const auto peer = lorv::PeerOf(bar);
    if (!Contains(peer->ClassName(), _T("ControlBar"))) continue;
    for (const HWND inner : peer->Children())
      if (Contains(TitleOf(inner), text)) return bar;
  }
  return nullptr;
}

template <class Control>
void Fill(Control& control, const CStringArray& list) {
  control.ResetContent();
  for (int i = 0; i < list.GetSize(); ++i)
    if (list.GetAt(i) != _T("?")) control.AddString(list.GetAt(i));
}

}  // namespace

int CAdLorvComm::EnumWindowsTitleProc(HWND window, __int64 search) {
  lorv::WindowSearch* const wanted = SearchAt(search);
  if (wanted == nullptr) return kStop;
  if (!IsDialog(window) || !Contains(TitleOf(window), wanted->text)) return kGoOn;
  wanted->found = window;
  return kStop;
}

int CAdLorvComm::EnumWindowsClassProc(HWND window, __int64 search) {
  lorv::WindowSearch* const wanted = SearchAt(search);
  if (wanted == nullptr) return kStop;
  const CWnd* const object = CWnd::FromHandle(window);
  if (object == nullptr) return kGoOn;
  const CString name = CString::FromUtf8(object->GetRuntimeClass()->m_lpszClassName);
  if (name.CompareNoCase(wanted->text) != 0) return kGoOn;
  wanted->found = window;
  return kStop;
}

int CAdLorvComm::CloseWindowProc(HWND window, __int64 all_windows) {
  if (all_windows == 0 && !IsDialog(window)) return kGoOn;
  // The settings dialog ends the walk: what stands below it stays open.
  if (Contains(TitleOf(window).Left(lorv::kClosedTitleRoom - 1), kSettingsTitle)) return kStop;
  const auto peer = lorv::PeerOf(window);
  if ((peer->Style() & WS_VISIBLE) != 0)
    lorv::DesktopInForce().Post(window, WM_CLOSE, kClosedByProgram, kClosedByProgram);
  return kGoOn;
}

CWnd* CAdLorvComm::FindWindowExist(const CString& title) {
  lorv::WindowSearch search{title};
  WalkWindows(&EnumWindowsTitleProc, AddressOf(search));
  return search.found == nullptr ? nullptr : CWnd::FromHandle(search.found);
}

CWnd* CAdLorvComm::GetWindowExist(const CString& title) {
  return FindWindowExist(title);
}

bool CAdLorvComm::IsWindowTitleExist(const CString& title) {
  CWnd* const dialog = FindWindowExist(title);
  if (dialog == nullptr) return false;
  dialog->ShowWindow(SW_SHOW);
  return true;
}

HWND CAdLorvComm::IsWindowClassExist(const CString& class_name) {
  lorv::WindowSearch search{class_name};
  WalkWindows(&EnumWindowsClassProc, AddressOf(search));
  return search.found;
}

int CAdLorvComm::CloseWindow(bool all_windows) {
  return WalkWindows(&CloseWindowProc, all_windows ? 1 : 0);
}

CWnd* CAdLorvComm::GetDrawControlBar(LPCTSTR text) {
  const lorv::Desktop* const desktop = lorv::DesktopIfAny();
  const HWND frame = desktop == nullptr || text == nullptr ? nullptr : desktop->Active();
  const HWND bar = frame == nullptr ? nullptr : BarWith(frame, text);
  return bar == nullptr ? nullptr : CWnd::FromHandle(bar);
}

void CAdLorvComm::AddComboxItem(CComboBox& control, CStringArray& list) {
  Fill(control, list);
}

void CAdLorvComm::AddComboxItem(CListBox& control, CStringArray& list) {
  Fill(control, list);
}
