#include "platform/headless/desktop/headless_desktop.h"
#include "tests/comm/thread_windows_suite.h"

namespace lorv_test {
namespace {

struct InMemory {
  static std::unique_ptr<lorv::Desktop> Make() { return std::make_unique<lorv::HeadlessDesktop>(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ThreadWindows, InMemory);

// Also run where the process asks for a desktop that does not exist.
TEST(ThreadWithoutWindows, FindsAndClosesNothing) {
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("")), nullptr);
  EXPECT_FALSE(CAdLorvComm::IsWindowTitleExist(_T("")));
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CWnd")), nullptr);
  EXPECT_EQ(CAdLorvComm::CloseWindow(true), 0);
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(_T("")), nullptr);
  EXPECT_FALSE(CAdLorvComm::RefreshDefNum());
  CAdLorvComm::RefeshDlgHLCheck();
  CRect rect;
  int show_state = 0;
  EXPECT_TRUE(CAdLorvComm::WndPosFromStringToRect(_T("10,10,100,100"), rect, show_state));
}

}  // namespace
}  // namespace lorv_test
