#include "framework/windows/window.h"

#include <functional>

#include "framework/drawing/device_context.h"
#include "tests/support/headless_desk.h"

namespace {

using lorv_test::Desk;
using lorv_test::Notes;

constexpr UINT kPrivate = WM_USER + 7;
UINT registered_message = 0;

// Notes what it is notified of, and does what the test wants in the middle of it.
class NotedSheet : public lorv_test::NotingWindow {
 public:
  std::function<void(const std::string&)> on;
  bool dies_with_window = false;
  int* ends = nullptr;

  ~NotedSheet() override {
    if (ends != nullptr) ++*ends;
  }

  void Say(const std::string& what) {
    Note(what);
    const auto copy = on;
    if (copy) copy(what);
  }

 protected:
  int OnCreate(LPCREATESTRUCT request) {
    Say("create " + std::to_string(request->cx));
    return CWnd::OnCreate(request);
  }
  void OnDestroy() { Say("destroy"); }
  void OnPaint() {
    CPaintDC dc(this);
    Say("paint " + std::to_string(CRect(dc.m_ps.rcPaint).Width()));
  }
  void OnSize(UINT /*type*/, int width, int height) {
    Say("size " + std::to_string(width) + " " + std::to_string(height));
  }
  void OnKeyDown(UINT key, UINT repeat, UINT flags) {
    Say("key " + std::to_string(key));
    if (m_hWnd != nullptr) CWnd::OnKeyDown(key, repeat, flags);
  }
  void OnLButtonDown(UINT flags, CPoint point) {
    Say("press " + std::to_string(flags) + " " + std::to_string(point.x) + "," + std::to_string(point.y));
  }
  void OnTimer(UINT_PTR id) { Say("timer " + std::to_string(id)); }
  BOOL OnSetCursor(CWnd* window, UINT hit, UINT message) {
    Say("cursor " + std::to_string(hit));
    return CWnd::OnSetCursor(window, hit, message);
  }
  LRESULT OnPrivate(WPARAM w, LPARAM l) {
    Say("private");
    return static_cast<LRESULT>(w) + l;
  }
  LRESULT OnRegistered(WPARAM /*w*/, LPARAM /*l*/) {
    Say("registered");
    return 5;
  }
  void OnChange() { Say("change"); }
  void OnRange(UINT id) { Say("range " + std::to_string(id)); }
  void OnHeader(NMHDR* header, LRESULT* result) {
    Say("notify " + std::to_string(static_cast<int>(header->code)));
    *result = 9;
  }
  void PostNcDestroy() override {
    if (dies_with_window) delete this;
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(NotedSheet, lorv_test::NotingWindow)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_KEYDOWN()
ON_WM_LBUTTONDOWN()
ON_WM_TIMER()
ON_WM_SETCURSOR()
ON_MESSAGE(kPrivate, OnPrivate)
ON_REGISTERED_MESSAGE(registered_message, OnRegistered)
ON_EN_CHANGE(1002, OnChange)
ON_COMMAND_RANGE(40, 42, OnRange)
ON_NOTIFY(-521, 77, OnHeader)
END_MESSAGE_MAP()

class Window : public Desk {
 protected:
  Window() {
    sheet.Create(_T("NotedSheet"), _T("a"), WS_CHILD | WS_VISIBLE, CRect(10, 20, 110, 70), &top, 7);
    Run();
  }
  NotedSheet sheet;
};

}  // namespace

TEST_F(Window, HeaderExample) {
  CWnd child;
  child.Create(nullptr, _T(""), WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &top, 7);
  EXPECT_EQ(child.GetDlgCtrlID(), 7);
}

TEST_F(Window, IsMadeSizedAndPaintedInThatOrder) {
  EXPECT_EQ(sheet.Taken(), (Notes{"create 100", "size 100 50", "paint 100"}));
}

TEST_F(Window, KnowsItsKin) {
  EXPECT_EQ(sheet.GetParent(), &top);
  EXPECT_EQ(sheet.GetOwner(), &top);
  EXPECT_EQ(sheet.GetTopLevelParent(), &top);
  EXPECT_EQ(top.GetDlgItem(7), &sheet);
  EXPECT_EQ(top.GetDlgItem(8), nullptr);
  EXPECT_EQ(top.GetWindow(GW_CHILD), &sheet);
  EXPECT_NE(top.IsChild(&sheet), 0);
  EXPECT_EQ(sheet.IsChild(&top), 0);
  CWnd other;
  other.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 1, 1), &top, 8);
  EXPECT_EQ(sheet.GetWindow(GW_HWNDNEXT), &other);
  EXPECT_EQ(other.GetWindow(GW_HWNDPREV), &sheet);
  EXPECT_EQ(other.GetWindow(GW_HWNDNEXT), nullptr);
  sheet.SetOwner(&other);
  EXPECT_EQ(sheet.GetOwner(), &other);
}

TEST_F(Window, HandleLeadsToTheObjectAndBack) {
  EXPECT_EQ(CWnd::FromHandle(sheet.m_hWnd), &sheet);
  EXPECT_EQ(CWnd::FromHandlePermanent(sheet.m_hWnd), &sheet);
  EXPECT_EQ(sheet.GetWindowClassName(), CString(_T("NotedSheet")));
  EXPECT_STREQ(sheet.GetRuntimeClass()->m_lpszClassName, "CWnd");
  const HWND handle = sheet.Detach();
  EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
  CWnd* const made_up = CWnd::FromHandle(handle);
  ASSERT_NE(made_up, nullptr);
  EXPECT_EQ(made_up->GetDlgCtrlID(), 7);
  EXPECT_NE(sheet.SubclassWindow(handle), 0);
  EXPECT_EQ(CWnd::FromHandle(handle), &sheet);
}

TEST_F(Window, MessagesFindTheirRows) {
  sheet.Taken();
  EXPECT_EQ(sheet.SendMessage(kPrivate, 2, 3), 5);
  registered_message = desktop.RegisterMessage(_T("lorv test"));
  EXPECT_EQ(sheet.SendMessage(registered_message), 5);
  sheet.SendMessage(WM_COMMAND, MAKEWPARAM(1002, EN_CHANGE), 0);
  sheet.SendMessage(WM_COMMAND, MAKEWPARAM(41, 0), 0);
  sheet.SendMessage(WM_COMMAND, MAKEWPARAM(43, 0), 0);
  NMHDR header = {sheet.m_hWnd, 77, static_cast<UINT>(-521)};
  EXPECT_EQ(sheet.SendMessage(WM_NOTIFY, 77, reinterpret_cast<LPARAM>(&header)), 9);
  EXPECT_EQ(sheet.Taken(), (Notes{"private", "registered", "command 1002 768", "change", "command 41 0",
                                  "range 41", "command 43 0", "notify -521"}));
}

TEST_F(Window, CommandsCanBeAskedForWithoutBeingRun) {
  sheet.Taken();
  AFX_CMDHANDLERINFO info;
  EXPECT_NE(sheet.OnCmdMsg(40, CN_COMMAND, nullptr, &info), 0);
  EXPECT_EQ(info.pTarget, &sheet);
  EXPECT_EQ(sheet.OnCmdMsg(39, CN_COMMAND, nullptr, &info), 0);
  AFX_EVENT event;
  EXPECT_EQ(sheet.OnCmdMsg(40, CN_EVENT, &event, nullptr), 0);
  EXPECT_TRUE(sheet.Taken().empty());
}

TEST_F(Window, PostedMessagesWaitForTheQueue) {
  sheet.Taken();
  EXPECT_NE(sheet.PostMessage(kPrivate, 1, 1), 0);
  EXPECT_TRUE(sheet.Taken().empty());
  Run();
  EXPECT_EQ(sheet.Taken(), Notes{"private"});
}

TEST_F(Window, KeysAndPressesComeWithTheirPlace) {
  sheet.SetFocus();
  sheet.Taken();
  desktop.Press(VK_F2);
  desktop.Click(On(sheet, 3, 4));
  Run();
  EXPECT_EQ(sheet.Taken(), (Notes{"key 113", "cursor 1", "cursor 1", "press 1 3,4", "cursor 1"}));
}

TEST_F(Window, TimersComeDueByTheClock) {
  sheet.Taken();
  EXPECT_EQ(sheet.SetTimer(3, 100, nullptr), 3U);
  desktop.Advance(99);
  EXPECT_TRUE(sheet.Taken().empty());
  desktop.Advance(1);
  desktop.Advance(200);
  EXPECT_EQ(sheet.Taken(), (Notes{"timer 3", "timer 3", "timer 3"}));
  EXPECT_NE(sheet.KillTimer(3), 0);
  EXPECT_EQ(sheet.KillTimer(3), 0);
  desktop.Advance(500);
  EXPECT_TRUE(sheet.Taken().empty());
}

TEST_F(Window, MovesWithItsParentAndReportsItsSize) {
  CRect rect;
  sheet.GetWindowRect(rect);
  EXPECT_EQ(rect, CRect(114, 148, 214, 198));
  sheet.Taken();
  sheet.MoveWindow(0, 0, 60, 30);
  EXPECT_EQ(sheet.Taken(), Notes{"size 60 30"});
  sheet.GetClientRect(rect);
  EXPECT_EQ(rect, CRect(0, 0, 60, 30));
  sheet.SetWindowPos(nullptr, 5, 6, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  sheet.GetWindowRect(rect);
  EXPECT_EQ(rect, CRect(109, 134, 169, 164));
  sheet.ScreenToClient(rect);
  EXPECT_EQ(rect, CRect(0, 0, 60, 30));
}

TEST_F(Window, IsVisibleWithItsParentOnly) {
  EXPECT_NE(sheet.IsWindowVisible(), 0);
  top.ShowWindow(SW_HIDE);
  EXPECT_EQ(sheet.IsWindowVisible(), 0);
  EXPECT_NE(sheet.GetStyle() & WS_VISIBLE, 0U);
  EXPECT_EQ(top.ShowWindow(SW_SHOW), FALSE);
  EXPECT_NE(sheet.ShowWindow(SW_HIDE), 0);
}

TEST_F(Window, ScrollBarsKeepTheirPositionInTheRange) {
  SCROLLINFO info = {};
  info.fMask = SIF_ALL;
  info.nMax = 99;
  info.nPage = 10;
  info.nPos = 500;
  sheet.SetScrollInfo(SB_VERT, &info);
  EXPECT_EQ(sheet.GetScrollPos(SB_VERT), 90);
  EXPECT_NE(sheet.GetStyle() & WS_VSCROLL, 0U);
  EXPECT_EQ(sheet.SetScrollPos(SB_VERT, -4), 90);
  EXPECT_EQ(sheet.GetScrollPos(SB_VERT), 0);
  CRect client;
  sheet.GetClientRect(client);
  EXPECT_EQ(client.Width(), 84);
  info.nPage = 100;
  sheet.SetScrollInfo(SB_VERT, &info);
  EXPECT_EQ(sheet.GetStyle() & WS_VSCROLL, 0U);
}

TEST_F(Window, WithoutAWindowNothingHappens) {
  CWnd none;
  CRect rect(1, 2, 3, 4);
  none.GetClientRect(rect);
  EXPECT_EQ(rect, CRect());
  EXPECT_EQ(none.GetWindowTextLength(), 0);
  EXPECT_EQ(none.GetParent(), nullptr);
  EXPECT_EQ(none.SendMessage(kPrivate, 1, 1), 0);
  EXPECT_EQ(none.PostMessage(kPrivate), 0);
  EXPECT_EQ(none.DestroyWindow(), 0);
  EXPECT_EQ(none.SetTimer(1, 1, nullptr), 0U);
  EXPECT_EQ(none.GetDC(), nullptr);
  CClientDC dc(&none);
  EXPECT_EQ(dc.GetTextExtent(_T("abc")), CSize(0, 0));
  none.Invalidate();
  none.SetFocus();
  EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST_F(Window, TextIsCutToTheRoom) {
  sheet.SetWindowText(_T("构件表"));
  TCHAR room[3] = {1, 1, 1};
  EXPECT_EQ(sheet.GetWindowText(room, 3), 2);
  EXPECT_EQ(CString(room), CString(_T("构件")));
  EXPECT_EQ(sheet.GetWindowText(room, 0), 0);
  CString text;
  EXPECT_EQ(top.GetDlgItemText(7, text), 3);
}

TEST_F(Window, EndsInsideItsOwnKey) {
  sheet.SetFocus();
  sheet.Taken();
  sheet.on = [this](const std::string& what) {
    if (what == "key 13") sheet.DestroyWindow();
  };
  desktop.Press(VK_RETURN);
  Run();
  EXPECT_EQ(sheet.Taken(), (Notes{"key 13", "destroy"}));
  EXPECT_EQ(sheet.m_hWnd, nullptr);
  EXPECT_EQ(CWnd::GetFocus(), &top);
}

TEST_F(Window, ParentMayEndInsideAChildsKey) {
  sheet.SetFocus();
  sheet.on = [this](const std::string& what) {
    if (what == "key 13") top.DestroyWindow();
  };
  desktop.Press(VK_RETURN);
  Run();
  EXPECT_EQ(sheet.m_hWnd, nullptr);
  EXPECT_EQ(top.m_hWnd, nullptr);
  EXPECT_TRUE(desktop.Windows().empty());
}

TEST_F(Window, ObjectMayEndWithItsWindow) {
  int ends = 0;
  auto* const mortal = new NotedSheet;
  mortal->dies_with_window = true;
  mortal->ends = &ends;
  mortal->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &top, 9);
  const HWND handle = mortal->m_hWnd;
  mortal->SendMessage(WM_CLOSE);
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(desktop.Find(handle), nullptr);
}

TEST_F(Window, ObjectMayEndInsideItsOwnHandler) {
  int ends = 0;
  auto* const mortal = new NotedSheet;
  mortal->ends = &ends;
  mortal->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &top, 9);
  mortal->on = [mortal](const std::string& what) {
    if (what == "private") delete mortal;
  };
  mortal->PostMessage(kPrivate);
  mortal->PostMessage(kPrivate);
  Run();
  EXPECT_EQ(ends, 1);
}

TEST_F(Window, RefusedCreationLeavesNoWindow) {
  class Refusing : public CWnd {
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      return message == WM_CREATE ? -1 : CWnd::WindowProc(message, w, l);
    }
  };
  Refusing refusing;
  EXPECT_EQ(refusing.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 9, 9), &top, 9), FALSE);
  EXPECT_EQ(refusing.m_hWnd, nullptr);
  EXPECT_EQ(top.GetDlgItem(9), nullptr);
}

TEST_F(Window, CaptureTakesThePointerAndIsReportedItsEnd) {
  CWnd other;
  other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(200, 0, 300, 50), &top, 8);
  sheet.Taken();
  sheet.SetCapture();
  EXPECT_EQ(CWnd::GetCapture(), &sheet);
  desktop.Click(On(other, 5, 5));
  Run();
  EXPECT_EQ(sheet.Taken(), Notes{"press 1 195,-15"});
  other.SetCapture();
  EXPECT_EQ(CWnd::GetCapture(), &other);
  desktop.SetCapture(nullptr);
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(Window, OnlyWhatIsOutOfDateIsPainted) {
  sheet.Taken();
  sheet.InvalidateRect(CRect(90, 10, 300, 20));
  sheet.InvalidateRect(CRect(95, 0, 96, 1));
  EXPECT_TRUE(sheet.Taken().empty());
  Run();
  EXPECT_EQ(sheet.Taken(), Notes{"paint 10"});
  sheet.RedrawWindow();
  EXPECT_EQ(sheet.Taken(), Notes{"paint 100"});
}

TEST_F(Window, MessagesAreOfferedUpTheRow) {
  class Taking : public CWnd {
   public:
    int offered = 0;
    BOOL PreTranslateMessage(MSG* message) override {
      if (message->message != WM_KEYDOWN) return FALSE;
      ++offered;
      return message->wParam == VK_TAB;
    }
  };
  Taking frame;
  frame.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 300, 300), nullptr, 0);
  NotedSheet inner;
  inner.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &frame, 9);
  inner.SetFocus();
  inner.Taken();
  desktop.Press(VK_TAB);
  desktop.Press(VK_F2);
  Run();
  EXPECT_EQ(frame.offered, 2);
  EXPECT_EQ(inner.Taken(), (Notes{"key 113", "paint 9"}));
}
