#include "platform/headless/desktop/headless_desktop.h"

#include "framework/drawing/device_context.h"
#include "tests/support/headless_desk.h"

namespace {

using lorv_test::Notes;

class HeadlessDesktop : public lorv_test::Desk {};

}  // namespace

TEST_F(HeadlessDesktop, PostedComesBeforeInputBeforePaintBeforeTimers) {
  class Order : public lorv_test::NotingWindow {
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      if (message == WM_USER || message == WM_KEYDOWN || message == WM_PAINT || message == WM_TIMER)
        Note(std::to_string(message));
      return NotingWindow::WindowProc(message, w, l);
    }
  };
  Order order;
  order.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 200), nullptr, 0);
  order.SetTimer(1, 10, nullptr);
  Run();
  order.Taken();
  order.Invalidate();
  desktop.KeyDown(VK_F2);
  order.PostMessage(WM_USER);
  EXPECT_TRUE(desktop.Pump(false));
  EXPECT_TRUE(desktop.Pump(false));
  EXPECT_TRUE(desktop.Pump(false));
  EXPECT_FALSE(desktop.Pump(false));
  desktop.Advance(10);
  EXPECT_EQ(order.Taken(), (Notes{"1024", "256", "15", "275"}));
}

TEST_F(HeadlessDesktop, TopWindowsStandTheNewestFirst) {
  CWnd other;
  other.Create(nullptr, _T("o"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 50, 50), nullptr, 0);
  EXPECT_EQ(desktop.Windows(), (std::vector<HWND>{other.m_hWnd, top.m_hWnd}));
  top.BringWindowToTop();
  EXPECT_EQ(desktop.Windows().front(), top.m_hWnd);
  EXPECT_EQ(CWnd::GetActiveWindow(), &other);
  other.DestroyWindow();
  EXPECT_EQ(CWnd::GetActiveWindow(), &top);
}

TEST_F(HeadlessDesktop, OwnedWindowsGoWithTheirOwner) {
  CWnd owned;
  owned.Create(nullptr, nullptr, WS_POPUP | WS_CAPTION, CRect(0, 0, 50, 50), &top, 0);
  EXPECT_EQ(owned.GetParent(), &top);
  top.DestroyWindow();
  EXPECT_EQ(owned.m_hWnd, nullptr);
}

namespace {

// Makes a window of its own when it is notified of its end.
class LateOwner : public CWnd {
 public:
  CWnd owned;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == WM_DESTROY || message == WM_NCDESTROY)
      owned.Create(nullptr, nullptr, WS_POPUP, CRect(0, 0, 50, 50), this, 0);
    return CWnd::WindowProc(message, w, l);
  }
};

}  // namespace

TEST_F(HeadlessDesktop, WindowMadeForOneThatEndsGoesWithIt) {
  LateOwner owner;
  owner.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(10, 10, 60, 60), &top, 1);
  owner.DestroyWindow();
  EXPECT_EQ(owner.owned.m_hWnd, nullptr);
  EXPECT_EQ(desktop.Windows(), std::vector<HWND>{top.m_hWnd});
}

TEST_F(HeadlessDesktop, FindsTheInnermostWindow) {
  CWnd child;
  child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(10, 10, 60, 60), &top, 1);
  EXPECT_EQ(CWnd::WindowFromPoint(On(child, 1, 1)), &child);
  child.EnableWindow(FALSE);
  EXPECT_EQ(CWnd::WindowFromPoint(On(child, 1, 1)), &top);
  EXPECT_EQ(CWnd::WindowFromPoint({5, 5}), nullptr);
}

TEST_F(HeadlessDesktop, ForeignFocusIsAHandleThatIsNotOurs) {
  top.SetFocus();
  desktop.LeaveProgram();
  EXPECT_EQ(desktop.Focus(), lorv::HeadlessForeignWindow());
  EXPECT_NE(desktop.Focus(), nullptr);
  EXPECT_EQ(CWnd::GetFocus(), nullptr);
  EXPECT_EQ(desktop.Active(), nullptr);
  top.SetFocus();
  EXPECT_EQ(CWnd::GetFocus(), &top);
}

TEST_F(HeadlessDesktop, ModifiersAreDownWhileHeld) {
  std::vector<SHORT> seen;
  desktop.KeyDown(VK_CONTROL);
  Run();
  EXPECT_LT(desktop.KeyState(VK_CONTROL), 0);
  desktop.KeyUp(VK_CONTROL);
  desktop.MouseDown();
  Run();
  EXPECT_EQ(desktop.KeyState(VK_CONTROL), 0);
  EXPECT_LT(desktop.KeyState(VK_LBUTTON), 0);
}

TEST_F(HeadlessDesktop, LayoutsAreAmongThoseInstalled) {
  const auto layouts = desktop.Layouts();
  ASSERT_EQ(layouts.size(), 2U);
  EXPECT_EQ(desktop.ActivateLayout(layouts[1], 1), layouts[0]);
  EXPECT_EQ(desktop.Layout(), layouts[1]);
  EXPECT_EQ(desktop.ActivateLayout(reinterpret_cast<HKL>(UINT_PTR{5}), 1), nullptr);
  EXPECT_EQ(desktop.Layout(), layouts[1]);
}

TEST_F(HeadlessDesktop, ClipboardHoldsText) {
  EXPECT_FALSE(desktop.HasClipboardText());
  desktop.SetClipboardText(_T("a\t1\r\n"));
  EXPECT_TRUE(desktop.HasClipboardText());
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("a\t1\r\n")));
}

TEST_F(HeadlessDesktop, RegisteredMessagesHaveOneNumberAName) {
  const UINT first = desktop.RegisterMessage(_T("BCGM_A"));
  EXPECT_GE(first, 0xC000U);
  EXPECT_NE(desktop.RegisterMessage(_T("BCGM_B")), first);
  EXPECT_EQ(desktop.RegisterMessage(_T("BCGM_A")), first);
}

TEST_F(HeadlessDesktop, WheelGoesToTheFocusAndUpTheRow) {
  class Wheel : public lorv_test::NotingWindow {
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      if (message == WM_MOUSEWHEEL) Note(std::to_string(static_cast<short>(HIWORD(w))));
      return NotingWindow::WindowProc(message, w, l);
    }
  };
  Wheel frame;
  frame.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 200), nullptr, 0);
  CEdit edit;
  edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &frame, 1);
  edit.SetFocus();
  frame.Taken();
  desktop.Wheel(-120);
  Run();
  EXPECT_EQ(frame.Taken(), Notes{"-120"});
}

TEST_F(HeadlessDesktop, LeavingIsReportedOnceWhenAskedFor) {
  class Hover : public lorv_test::NotingWindow {
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      if (message == WM_MOUSELEAVE) Note("leave");
      return NotingWindow::WindowProc(message, w, l);
    }
  };
  Hover child;
  child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &top, 1);
  desktop.Find(child.m_hWnd)->TrackLeave();
  desktop.MoveMouse(On(child, 5, 5));
  desktop.MoveMouse(On(child, 70, 5));
  desktop.MoveMouse(On(child, 5, 5));
  desktop.MoveMouse(On(child, 70, 5));
  Run();
  EXPECT_EQ(child.Taken(), Notes{"leave"});
}

TEST_F(HeadlessDesktop, ControlsShowTheirTexts) {
  CButton button;
  CEdit edit;
  button.Create(_T("确定(&O)"), WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &top, 1);
  edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 30, 90, 50), &top, 2);
  edit.SetWindowText(_T("KL1"));
  Run();
  const auto shows = [this](const CWnd& window, LPCTSTR text) {
    for (const lorv::Drawn& drawn : desktop.Seen(window.m_hWnd))
      if (drawn.text == CString(text)) return true;
    return false;
  };
  EXPECT_TRUE(shows(button, _T("确定(O)")));
  EXPECT_TRUE(shows(edit, _T("KL1")));
}

TEST_F(HeadlessDesktop, ItsEndIsTheEndOfItsWindows) {
  lorv_test::NotingWindow window;
  {
    lorv::HeadlessDesktop inner;
    const lorv::ScopedDesktop scope(inner);
    window.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW, CRect(0, 0, 9, 9), nullptr, 0);
    EXPECT_NE(window.m_hWnd, nullptr);
  }
  EXPECT_EQ(window.m_hWnd, nullptr);
}
