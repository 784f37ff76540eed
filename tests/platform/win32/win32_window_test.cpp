#include "platform/win32/window/win32_window.h"

#include <stdexcept>
#include <string>

#include "platform/ports/dialogs.h"
#include "tests/platform/win32/real_input.h"

using lorv::WindowKind;

class Win32Windows : public RealWindows {};

TEST_F(Win32Windows, IsAttachedBeforeItsFirstMessageWhichIsWmCreate) {
  Probe child;
  int parameter = 0;
  CREATESTRUCT reported = {};
  child.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_CREATE) reported = *reinterpret_cast<CREATESTRUCT*>(m.l);
    return false;
  };
  auto request = child.Request(WindowKind::Custom, WS_CHILD | WS_VISIBLE, {5, 6, 45, 26}, top.window, 7);
  request.text = _T("墙");
  request.parameter = &parameter;
  const HWND made = child.Make(request);
  ASSERT_EQ(made, child.window);
  ASSERT_FALSE(child.seen.empty());
  EXPECT_EQ(child.seen.front().number, static_cast<UINT>(WM_CREATE));
  EXPECT_LT(child.At(WM_CREATE), child.At(WM_SIZE));
  EXPECT_EQ(reported.lpCreateParams, &parameter);
  EXPECT_EQ(reported.cx, 40);
  EXPECT_EQ(reported.hwndParent, top.window);
  const auto peer = child.Peer();
  EXPECT_EQ(peer->Kind(), WindowKind::Custom);
  EXPECT_EQ(peer->Id(), 7u);
  EXPECT_EQ(peer->Text(), _T("墙"));
  EXPECT_EQ(peer->Parent(), top.window);
  EXPECT_EQ(peer->Owner(), nullptr);
  EXPECT_EQ(peer->Style() & (WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN),
            static_cast<DWORD>(WS_CHILD | WS_VISIBLE));
  EXPECT_EQ(CRect(peer->ClientRect()), CRect(0, 0, 40, 20));
  EXPECT_EQ(CPoint(peer->ClientOrigin()), CPoint(top.Peer()->ClientOrigin()) + CPoint(5, 6));
}

TEST_F(Win32Windows, EveryKindHasTheSystemsClassAndHandsItsMessagesOver) {
  const struct {
    WindowKind kind;
    DWORD style;
    LPCTSTR name;
  } kinds[] = {{WindowKind::Custom, WS_CHILD, _T("LorvWindow")},
               {WindowKind::Top, WS_CAPTION, _T("LorvWindow")},
               {WindowKind::Dialog, WS_CAPTION, _T("#32770")},
               {WindowKind::Popup, 0, _T("LorvWindow")},
               {WindowKind::Edit, WS_CHILD, _T("Edit")},
               {WindowKind::Combo, WS_CHILD | CBS_DROPDOWN, _T("ComboBox")},
               {WindowKind::List, WS_CHILD, _T("ListBox")},
               {WindowKind::Button, WS_CHILD, _T("Button")},
               {WindowKind::Static, WS_CHILD, _T("Static")}};
  for (const auto& wanted : kinds) {
    Probe probe;
    ASSERT_NE(probe.Make(probe.Request(wanted.kind, wanted.style, {0, 0, 50, 30}, top.window, 3)), nullptr)
        << static_cast<int>(wanted.kind);
    EXPECT_EQ(probe.Peer()->ClassName(), wanted.name);
    EXPECT_EQ(probe.Peer()->Kind(), wanted.kind);
    EXPECT_EQ(probe.seen.front().number, static_cast<UINT>(WM_CREATE)) << static_cast<int>(wanted.kind);
    const auto peer = probe.Peer();
    peer->Destroy();
    EXPECT_FALSE(peer->Exists());
    EXPECT_EQ(probe.Count(WM_DESTROY), 1);
    EXPECT_EQ(probe.Count(WM_NCDESTROY), 1);
    EXPECT_EQ(probe.seen.back().number, static_cast<UINT>(WM_NCDESTROY));
  }
}

TEST_F(Win32Windows, OwnClassNamesCanBeLookedUp) {
  Probe probe;
  auto request = probe.Request(WindowKind::Top, WS_CAPTION, {0, 0, 50, 30}, nullptr);
  request.class_name = _T("TakeOffSheet");
  probe.Make(request);
  EXPECT_EQ(FindWindowW(L"TakeOffSheet", nullptr), probe.window);
  Probe second;
  request.attach = second.Request(WindowKind::Top, 0, {0, 0, 1, 1}, nullptr).attach;
  EXPECT_NE(second.Make(request), nullptr);
}

TEST_F(Win32Windows, RefusedCreationLeavesNothing) {
  Probe probe;
  probe.on = [](const Probe::Message& m, LRESULT& result) {
    result = -1;
    return m.number == WM_CREATE;
  };
  EXPECT_EQ(MakeChild(probe, WindowKind::Custom, 0, {0, 0, 9, 9}, 1), nullptr);
  EXPECT_EQ(probe.window, nullptr);
  EXPECT_TRUE(top.Peer()->Children().empty());
}

TEST_F(Win32Windows, DestroyedInWmCreateIsNotMade) {
  Probe probe;
  probe.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_SIZE) probe.Peer()->Destroy();
    return false;
  };
  EXPECT_EQ(MakeChild(probe, WindowKind::Custom, 0, {0, 0, 9, 9}, 1), nullptr);
  EXPECT_EQ(probe.Count(WM_NCDESTROY), 1);
}

TEST_F(Win32Windows, DestructionRunsFromTheOutsideInAndBack) {
  Probe outer;
  Probe inner;
  std::string order;
  MakeChild(outer, WindowKind::Custom, 0, {0, 0, 50, 50}, 1);
  inner.Make(inner.Request(WindowKind::Custom, WS_CHILD, {0, 0, 9, 9}, outer.window, 2));
  const auto note = [&order](const char* who) {
    return [&order, who](const Probe::Message& m, LRESULT&) {
      if (m.number == WM_DESTROY) order += std::string("destroy ") + who + ", ";
      if (m.number == WM_NCDESTROY) order += std::string("end ") + who + ", ";
      return false;
    };
  };
  outer.on = note("outer");
  inner.on = note("inner");
  outer.Peer()->Destroy();
  EXPECT_EQ(order, "destroy outer, destroy inner, end inner, end outer, ");
}

TEST_F(Win32Windows, DestroyIsLegalInEveryHandlerAndTwice) {
  for (const int number : {WM_LBUTTONDOWN, WM_SIZE, WM_SETFOCUS, WM_KILLFOCUS, WM_PAINT, WM_DESTROY,
                           WM_NCDESTROY, WM_SETTEXT, WM_TIMER, WM_SHOWWINDOW}) {
    const auto message = static_cast<UINT>(number);
    Probe probe;
    MakeChild(probe, WindowKind::Custom, 0, {0, 0, 20, 20}, 1);
    const auto peer = probe.Peer();
    probe.on = [&](const Probe::Message& m, LRESULT&) {
      if (m.number == message) peer->Destroy();
      return false;
    };
    peer->Place({0, 0, 30, 30});
    peer->Focus();
    top.Peer()->Focus();
    peer->SetText(_T("x"));
    peer->Update();
    Desk().Send(probe.window, WM_LBUTTONDOWN, 0, 0);
    Desk().Send(probe.window, WM_TIMER, 1, 0);
    peer->Show(SW_HIDE);
    peer->Destroy();
    peer->Destroy();
    EXPECT_EQ(probe.Count(WM_DESTROY), 1) << message;
    EXPECT_EQ(probe.Count(WM_NCDESTROY), 1) << message;
    EXPECT_FALSE(peer->Exists());
  }
}

TEST_F(Win32Windows, AControlIsFreedThoughItsClassKeepsTheEndToItself) {
  // A class of the system's kind, whose procedure frees its memory at the end.
  static int freed = 0;
  WNDCLASSW known = {};
  known.lpszClassName = L"LorvFreeing";
  known.hInstance = GetModuleHandleW(nullptr);
  known.lpfnWndProc = [](HWND window, UINT message, WPARAM w, LPARAM l) -> LRESULT {
    if (message == WM_NCDESTROY) ++freed;
    return DefWindowProcW(window, message, w, l);
  };
  ASSERT_NE(RegisterClassW(&known), 0);
  Probe probe;
  auto request = probe.Request(WindowKind::Custom, WS_CHILD, {0, 0, 20, 20}, top.window);
  request.class_name = known.lpszClassName;
  probe.Make(request);
  probe.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_NCDESTROY) return false;
    lorv::UnmapWindow(probe.window);
    probe.window = nullptr;
    return true;
  };
  const auto peer = probe.Peer();
  peer->Destroy();
  EXPECT_FALSE(peer->Exists());
  EXPECT_EQ(freed, 1);
}

TEST_F(Win32Windows, AGoneWindowAnswersWithNothing) {
  Probe probe;
  const HWND handle = MakeChild(probe, WindowKind::Edit, 0, {0, 0, 20, 20}, 1);
  const auto peer = probe.Peer();
  peer->Destroy();
  EXPECT_EQ(Desk().Find(handle), nullptr);
  EXPECT_EQ(Desk().Send(handle, WM_GETTEXTLENGTH, 0, 0), 0);
  EXPECT_FALSE(Desk().Post(handle, WM_USER, 0, 0));
  EXPECT_TRUE(peer->Text().IsEmpty());
  EXPECT_EQ(peer->Default(WM_GETTEXTLENGTH, 0, 0), 0);
  EXPECT_TRUE(CRect(peer->ClientRect()).IsRectNull());
  EXPECT_TRUE(CRect(peer->WindowRect()).IsRectNull());
  EXPECT_EQ(peer->Style(), 0u);
  EXPECT_EQ(peer->Parent(), nullptr);
  EXPECT_TRUE(peer->Children().empty());
  peer->SetText(_T("x"));
  peer->SetFont(Desk().DialogFont());
  peer->SetTimer(1, 10);
  peer->Focus();
  peer->Place({0, 0, 5, 5});
  EXPECT_FALSE(peer->KillTimer(1));
  RECT dirty = {1, 1, 2, 2};
  EXPECT_NE(peer->PaintCanvas(dirty), nullptr);
  EXPECT_TRUE(CRect(dirty).IsRectEmpty());
}

TEST_F(Win32Windows, OwnedWindowsGoFirstAndAreNoChildren) {
  auto owner = std::make_unique<Probe>();
  owner->Make(owner->Request(WindowKind::Top, WS_CAPTION | WS_VISIBLE, {600, 100, 800, 200}, nullptr));
  Probe owned;
  owned.Make(owned.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP, {600, 300, 700, 400}, owner->window));
  EXPECT_EQ(owned.Peer()->Owner(), owner->window);
  EXPECT_EQ(owned.Peer()->Parent(), nullptr);
  owner->Peer()->Destroy();
  EXPECT_EQ(owned.Count(WM_NCDESTROY), 1);
}

TEST_F(Win32Windows, PlaceReportsMovesAndSizes) {
  Probe probe;
  MakeChild(probe, WindowKind::Custom, 0, {0, 0, 20, 20}, 1);
  probe.seen.clear();
  probe.Peer()->Place({10, 12, 50, 42});
  EXPECT_EQ(probe.Count(WM_MOVE), 1);
  EXPECT_EQ(probe.Count(WM_SIZE), 1);
  probe.seen.clear();
  probe.Peer()->Place({10, 12, 50, 42});
  EXPECT_EQ(probe.Count(WM_MOVE) + probe.Count(WM_SIZE), 0);
}

TEST_F(Win32Windows, FrameSizeGivesTheClientAreaAskedFor) {
  Probe probe;
  constexpr DWORD kStyle = WS_CAPTION | WS_SYSMENU | WS_VSCROLL | WS_HSCROLL;
  probe.Make(probe.Request(WindowKind::Top, kStyle, {600, 100, 800, 300}, nullptr));
  const SIZE frame = probe.Peer()->FrameSize({120, 90});
  probe.Peer()->Place({600, 100, 600 + frame.cx, 100 + frame.cy});
  EXPECT_EQ(CRect(probe.Peer()->ClientRect()), CRect(0, 0, 120, 90));
}

TEST_F(Win32Windows, StylesVisibleAndDisabledAreAsTheyAreNow) {
  Probe probe;
  MakeChild(probe, WindowKind::Custom, WS_BORDER, {0, 0, 20, 20}, 1);
  const auto peer = probe.Peer();
  peer->Enable(false);
  EXPECT_NE(peer->Style() & WS_DISABLED, 0u);
  peer->Enable(true);
  peer->Show(SW_HIDE);
  EXPECT_EQ(peer->Style() & (WS_VISIBLE | WS_DISABLED), 0u);
  EXPECT_EQ(probe.Count(WM_ENABLE), 2);
  peer->Show(SW_SHOW);
  const CRect before(peer->ClientRect());
  peer->SetStyle(peer->Style() & ~static_cast<DWORD>(WS_BORDER));
  EXPECT_GT(CRect(peer->ClientRect()).Width(), before.Width());
  peer->SetExStyle(WS_EX_CLIENTEDGE);
  EXPECT_EQ(peer->ExStyle() & WS_EX_CLIENTEDGE, static_cast<DWORD>(WS_EX_CLIENTEDGE));
  peer->SetId(99);
  EXPECT_EQ(peer->Id(), 99u);
}

TEST_F(Win32Windows, ScrollBarsKeepTheirPositionInRange) {
  Probe probe;
  MakeChild(probe, WindowKind::Custom, WS_VSCROLL, {0, 0, 60, 60}, 1);
  SCROLLINFO info = {};
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = 99;
  info.nPage = 10;
  info.nPos = 1000;
  probe.Peer()->SetScroll(SB_VERT, info);
  const SCROLLINFO now = probe.Peer()->Scroll(SB_VERT);
  EXPECT_EQ(now.nPos, 90);
  EXPECT_EQ(now.nMax, 99);
  EXPECT_EQ(now.nPage, 10u);
  EXPECT_NE(probe.Peer()->Style() & WS_VSCROLL, 0u);
  info.nPage = 100;
  probe.Peer()->SetScroll(SB_VERT, info);
  EXPECT_EQ(probe.Peer()->Style() & WS_VSCROLL, 0u);
  probe.Peer()->ShowScroll(SB_HORZ, true);
  EXPECT_NE(probe.Peer()->Style() & WS_HSCROLL, 0u);
}

TEST_F(Win32Windows, FontsGoInAndComeOutByValue) {
  for (const WindowKind kind : {WindowKind::Edit, WindowKind::Custom}) {
    Probe probe;
    MakeChild(probe, kind, 0, {0, 0, 60, 30}, 1);
    EXPECT_EQ(probe.Peer()->Font().lfHeight, Desk().DialogFont().lfHeight);
    LOGFONT face = {};
    face.lfHeight = -27;
    face.lfWeight = FW_BOLD;
    probe.Peer()->SetFont(face);
    EXPECT_EQ(probe.Peer()->Font().lfHeight, -27);
    EXPECT_EQ(probe.Peer()->Font().lfWeight, FW_BOLD);
  }
}

TEST_F(Win32Windows, ChildrenStandInTheOrderOfTheirMaking) {
  Probe first;
  Probe second;
  MakeChild(first, WindowKind::Edit, 0, {0, 0, 60, 30}, 1);
  MakeChild(second, WindowKind::Edit, 0, {0, 40, 60, 70}, 2);
  EXPECT_EQ(top.Peer()->Children(), (std::vector<HWND>{first.window, second.window}));
  second.Peer()->Raise();
  EXPECT_EQ(top.Peer()->Children(), (std::vector<HWND>{second.window, first.window}));
}

TEST_F(Win32Windows, WindowsOfOthersAreAnsweredForToo) {
  const HWND foreign = CreateWindowExW(0, L"Edit", L"host", WS_CHILD, 0, 0, 50, 20, top.window,
                                       reinterpret_cast<HMENU>(static_cast<UINT_PTR>(5)), nullptr, nullptr);
  const auto peer = Desk().Find(foreign);
  ASSERT_NE(peer, nullptr);
  EXPECT_TRUE(peer->Exists());
  EXPECT_EQ(peer->Kind(), WindowKind::Edit);
  EXPECT_EQ(peer->Text(), _T("host"));
  EXPECT_EQ(peer->Parent(), top.window);
  EXPECT_EQ(peer->Default(EM_GETSEL, 0, 0), 0);
  EXPECT_EQ(peer->Default(WM_GETTEXTLENGTH, 0, 0), 4);
  peer->Destroy();
  EXPECT_FALSE(peer->Exists());
  EXPECT_NE(Desk().Find(GetDesktopWindow()), nullptr);
}

TEST_F(Win32Windows, PopupsAreShownWithoutTakingTheActivation) {
  Probe tip;
  tip.Make(tip.Request(WindowKind::Popup, WS_VISIBLE | WS_BORDER, {600, 500, 700, 540}, top.window));
  Settle();
  EXPECT_NE(tip.Peer()->Style() & WS_VISIBLE, 0u);
  EXPECT_EQ(Desk().Active(), top.window);
  Click({650, 520});
  EXPECT_EQ(tip.Count(WM_LBUTTONDOWN), 1);
  EXPECT_EQ(Desk().Active(), top.window);
  tip.Peer()->Show(SW_HIDE);
  tip.Peer()->Show(SW_SHOW);
  EXPECT_EQ(Desk().Active(), top.window);
}

TEST_F(Win32Windows, ExceptionsOfHandlersReachWhoCausedTheMessage) {
  Probe probe;
  MakeChild(probe, WindowKind::Custom, 0, {0, 0, 20, 20}, 1);
  probe.on = [](const Probe::Message& m, LRESULT&) -> bool {
    if (m.number == WM_USER + 1) throw std::runtime_error("handler");
    return false;
  };
  EXPECT_THROW(Desk().Send(probe.window, WM_USER + 1, 0, 0), std::runtime_error);
  Desk().Post(probe.window, WM_USER + 1, 0, 0);
  EXPECT_THROW(Settle(), std::runtime_error);
  // By way of two windows and the system twice.
  top.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_USER + 2) Desk().Send(probe.window, WM_USER + 1, 0, 0);
    return false;
  };
  EXPECT_THROW(Desk().Send(top.window, WM_USER + 2, 0, 0), std::runtime_error);
  // A loop that is not ours has nobody to report to: the message counts as done, now and later.
  SendMessageW(probe.window, WM_USER + 1, 0, 0);
  EXPECT_EQ(Desk().Send(probe.window, WM_USER + 3, 0, 0), 0);
  top.on = nullptr;
}

// The user presses the button while a timer of the program runs under the box.
TEST_F(Win32Windows, ExceptionsUnderAMessageBoxReachItsCaller) {
  bool throws = true;
  top.on = [&](const Probe::Message& m, LRESULT&) -> bool {
    const HWND box = FindWindowW(L"#32770", L"under the box");
    if (m.number != WM_TIMER || box == nullptr) return false;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    if (throws) throw std::runtime_error("timer");
    return false;
  };
  top.Peer()->SetTimer(78, 60);
  const lorv::MessageRequest request{_T("x"), _T("under the box"), MB_OK};
  EXPECT_THROW(lorv::NativeDialogs().ShowMessage(request), std::runtime_error);
  throws = false;
  EXPECT_EQ(lorv::NativeDialogs().ShowMessage(request), IDOK) << "nothing of the first one is left";
  top.Peer()->KillTimer(78);
  top.on = nullptr;
}

TEST_F(Win32Windows, AnExceptionInWmCreateLeavesNoWindow) {
  Probe probe;
  probe.on = [](const Probe::Message& m, LRESULT&) -> bool {
    if (m.number == WM_CREATE) throw std::runtime_error("create");
    return false;
  };
  EXPECT_THROW(MakeChild(probe, WindowKind::Edit, 0, {0, 0, 20, 20}, 1), std::runtime_error);
  EXPECT_TRUE(top.Peer()->Children().empty());
}

// More windows than there are handles at a time.
TEST_F(Win32Windows, GivesEveryHandleBack) {
  for (int i = 0; i < 4000; ++i) {
    Probe probe;
    const auto kind = i % 2 == 0 ? WindowKind::Edit : WindowKind::Custom;
    ASSERT_NE(probe.Make(probe.Request(kind, WS_CHILD, {0, 0, 20, 20}, top.window, 1)), nullptr) << i;
    LOGFONT face = {};
    face.lfHeight = -5 - i % 300;
    probe.Peer()->SetFont(face);
  }
  EXPECT_TRUE(top.Peer()->Children().empty());
}
