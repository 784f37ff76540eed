#include <future>
#include <thread>

#include "platform/win32/desktop/win32_desktop.h"
#include "tests/comm/thread_windows_suite.h"

namespace lorv_test {
namespace {

struct SystemWindows {
  static std::unique_ptr<lorv::Desktop> Make() { return lorv::MakeWin32Desktop(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, ThreadWindows, SystemWindows);

class HostsWindows : public WindowsOfThread {
 protected:
  HostsWindows() : WindowsOfThread(lorv::MakeWin32Desktop()) {}

  // As a program makes it that knows nothing of our window classes.
  static HWND MakeDialog(LPCWSTR title, DWORD style) {
    return CreateWindowExW(0, L"#32770", title, WS_POPUP | WS_CAPTION | style, 50, 50, 200, 100, nullptr,
                           nullptr, nullptr, nullptr);
  }
};

TEST_F(HostsWindows, AreFoundShownAndClosedLikeOurs) {
  const HWND dialog = MakeDialog(L"项目列表区", 0);
  const CWnd* const found = CAdLorvComm::GetWindowExist(_T("列表"));
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->m_hWnd, dialog);
  EXPECT_TRUE(CAdLorvComm::IsWindowTitleExist(_T("列表")));
  EXPECT_NE(IsWindowVisible(dialog), FALSE);
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CWnd")), dialog);
  EXPECT_EQ(CAdLorvComm::CloseWindow(false), 1);
  MSG message = {};
  ASSERT_NE(PeekMessageW(&message, dialog, WM_CLOSE, WM_CLOSE, PM_REMOVE), FALSE);
  EXPECT_EQ(message.wParam, 16U);
  EXPECT_EQ(message.lParam, 16);
  DestroyWindow(dialog);
}

TEST_F(HostsWindows, OfAnotherThreadAreNotSeen) {
  std::promise<HWND> made;
  std::promise<void> looked;
  std::thread other([&] {
    const HWND dialog = MakeDialog(L"回路核查", WS_VISIBLE);
    made.set_value(dialog);
    looked.get_future().wait();
    DestroyWindow(dialog);
  });
  EXPECT_NE(made.get_future().get(), nullptr);
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("回路核查")), nullptr);
  EXPECT_EQ(CAdLorvComm::CloseWindow(true), 0);
  looked.set_value();
  other.join();
}

}  // namespace
}  // namespace lorv_test
