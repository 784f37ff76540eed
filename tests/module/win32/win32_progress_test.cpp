#include <gtest/gtest.h>
#include <objbase.h>

#include <functional>

#include "module/progress.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

// The shell's own dialog, which lives on a thread of its own: what it shows is waited for.

namespace lorv {
namespace {

constexpr DWORD kPatience = 20000;

bool Until(const std::function<bool()>& is_so) {
  const DWORD start = GetTickCount();
  while (!is_so()) {
    if (GetTickCount() - start > kPatience) return false;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    Sleep(2);
  }
  return true;
}

// A window below another by what it shows; null if there is none.
HWND Below(HWND window, LPCWSTR class_name, const std::function<bool(HWND)>& fits) {
  for (HWND at = GetWindow(window, GW_CHILD); at != nullptr; at = GetWindow(at, GW_HWNDNEXT)) {
    wchar_t name[64] = {};
    GetClassNameW(at, name, 64);
    if (CString(name).CompareNoCase(class_name) == 0 && fits(at)) return at;
  }
  return nullptr;
}

HWND LabelWith(HWND window, LPCWSTR text) {
  return Below(window, L"Static", [text](HWND label) {
    wchar_t shown[512] = {};
    GetWindowTextW(label, shown, 512);
    return CString(shown) == text;
  });
}

class ShellProgress : public testing::Test {
 protected:
  ShellProgress() { CoInitialize(nullptr); }
  ~ShellProgress() override { CoUninitialize(); }

  static HWND Dialog() { return FindWindowW(nullptr, L"计算工程量"); }
};

TEST_F(ShellProgress, ShowsTitleAndLineAndGoes) {
  CProgressCom progress(4);
  ASSERT_TRUE(progress.StartProgress(_T("计算工程量")));
  EXPECT_TRUE(Until([] { return Dialog() != nullptr && IsWindowVisible(Dialog()); }));
  progress.StepProgress(1, _T("首层"));
  EXPECT_TRUE(Until([] { return LabelWith(Dialog(), L"首层") != nullptr; }));
  progress.StepProgress(2, _T(""));
  progress.StepProgress(-1, CString(_T('x'), 5000));
  EXPECT_TRUE(Until([] { return LabelWith(Dialog(), CString(_T('x'), 259)) != nullptr; }));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  progress.EndProgress();
  EXPECT_TRUE(Until([] { return Dialog() == nullptr; }));
}

// The dialog's own thread distinguishes Tab from other keys; the window in front is another program's, so the
// keys are posted to it as its thread would get them.
TEST_F(ShellProgress, CancelIsReachedByTabAndTheHeightStays) {
  CProgressCom progress(4);
  ASSERT_TRUE(progress.StartProgress(_T("计算工程量")));
  ASSERT_TRUE(Until([] { return Dialog() != nullptr && IsWindowVisible(Dialog()); }));
  RECT before = {};
  GetWindowRect(Dialog(), &before);
  for (const LPCTSTR text : {_T("首层 墙 梁 板 柱"), _T("Abg"), _T("x\r\ny")}) {
    progress.StepProgress(1, text);
    EXPECT_TRUE(Until([text] { return LabelWith(Dialog(), text) != nullptr; }));
    RECT now = {};
    GetWindowRect(Dialog(), &now);
    EXPECT_TRUE(EqualRect(&now, &before));
  }
  const HWND button = Below(Dialog(), L"Button", [](HWND) { return true; });
  const auto focus = [] {
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetWindowThreadProcessId(Dialog(), nullptr), &info);
    return info.hwndFocus;
  };
  EXPECT_EQ(GetNextDlgTabItem(Dialog(), nullptr, FALSE), button);
  EXPECT_TRUE(Until([&] {
    if (focus() == button) return true;
    PostMessageW(Dialog(), WM_KEYDOWN, VK_TAB, 1);
    PostMessageW(Dialog(), WM_KEYUP, VK_TAB, static_cast<LPARAM>(0xC0000001));
    Sleep(20);
    return focus() == button;
  }));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  PostMessageW(button, WM_KEYDOWN, VK_SPACE, 1);
  PostMessageW(button, WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001));
  HeadlessPlatform machine;
  Platform ports;
  ports.dialogs = &machine.dialogs;
  const ScopedPlatform scope(ports);
  machine.dialogs.answer = kAnswerYes;
  EXPECT_TRUE(Until([&] { return progress.QueryCancel(_T("停止?")); }));
  progress.EndProgress();
}

TEST_F(ShellProgress, NoStepsEndToo) {
  CProgressCom progress(0);
  ASSERT_TRUE(progress.StartProgress(_T("计算工程量")));
  EXPECT_TRUE(Until([] { return Dialog() != nullptr; }));
  progress.EndProgress();
  EXPECT_TRUE(Until([] { return Dialog() == nullptr; }));
}

TEST_F(ShellProgress, CancellingAsksUntilYes) {
  HeadlessPlatform machine;
  Platform ports;
  ports.dialogs = &machine.dialogs;
  const ScopedPlatform scope(ports);
  CProgressCom progress(4);
  ASSERT_TRUE(progress.StartProgress(_T("计算工程量")));
  ASSERT_TRUE(Until([] { return Dialog() != nullptr && IsWindowVisible(Dialog()); }));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_TRUE(machine.dialogs.messages.empty());
  const HWND button = Below(Dialog(), L"Button", [](HWND) { return true; });
  ASSERT_NE(button, nullptr);
  SendMessageW(button, BM_CLICK, 0, 0);
  machine.dialogs.answer = kAnswerYes;
  EXPECT_TRUE(Until([&] { return progress.QueryCancel(_T("停止?")); }));
  machine.dialogs.answer = kAnswerNo;
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_FALSE(progress.QueryCancel(_T("停止?")));
  EXPECT_EQ(machine.dialogs.messages.size(), 3U);
  progress.EndProgress();
}

}  // namespace
}  // namespace lorv
