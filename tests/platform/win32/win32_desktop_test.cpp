#include "platform/win32/desktop/win32_desktop.h"

#include <string>
#include <thread>

#include "tests/platform/win32/real_input.h"

using lorv::WindowKind;

class Win32Desktops : public RealWindows {
 protected:
  Probe sheet;
  void MakeSheet() {
    MakeChild(sheet, WindowKind::Custom, 0, {10, 10, 110, 90}, 1);
    sheet.Peer()->Focus();
    Settle();
    sheet.seen.clear();
  }
  CPoint OnSheet(int x, int y) { return CPoint(sheet.Peer()->ClientOrigin()) + CPoint(x, y); }
};

TEST_F(Win32Desktops, ListsTheWindowsOfItsThreadFromTheTop) {
  Probe hidden;
  hidden.Make(hidden.Request(WindowKind::Top, WS_CAPTION, {600, 100, 800, 200}, nullptr));
  Probe dialog;
  dialog.Make(dialog.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {600, 300, 800, 400},
                             top.window));
  const auto windows = Desk().Windows();
  ASSERT_EQ(windows.size(), 3u);
  EXPECT_NE(std::find(windows.begin(), windows.end(), hidden.window), windows.end());
  const auto at = [&](HWND window) {
    return std::find(windows.begin(), windows.end(), window) - windows.begin();
  };
  EXPECT_LT(at(dialog.window), at(top.window));
}

TEST_F(Win32Desktops, PostedMessagesComeInOrderAndOneAtATime) {
  MakeSheet();
  Desk().Post(sheet.window, WM_USER + 1, 5, 6);
  Desk().Post(sheet.window, WM_USER + 2, 0, 0);
  EXPECT_EQ(sheet.Count(WM_USER + 1), 0);
  EXPECT_TRUE(Desk().Pump(true));
  EXPECT_EQ(sheet.Count(WM_USER + 1), 1);
  EXPECT_EQ(sheet.Count(WM_USER + 2), 0);
  EXPECT_TRUE(Desk().Pump(false));
  EXPECT_EQ(sheet.Count(WM_USER + 2), 1);
  EXPECT_FALSE(Desk().Pump(false));
  EXPECT_TRUE(Desk().Post(nullptr, WM_USER, 0, 0));
  EXPECT_TRUE(Desk().Pump(false));
}

TEST_F(Win32Desktops, OtherThreadsMayPost) {
  MakeSheet();
  std::thread([&] {
    for (UINT i = 0; i < 100; ++i) Desk().Post(sheet.window, WM_USER + 1, i, 0);
    EXPECT_NE(Desk().Find(sheet.window), nullptr);
  }).join();
  Settle();
  EXPECT_EQ(sheet.Count(WM_USER + 1), 100);
}

TEST_F(Win32Desktops, MessagesToAGoneWindowAreLost) {
  MakeSheet();
  Desk().Post(sheet.window, WM_USER + 1, 0, 0);
  sheet.Peer()->Destroy();
  Settle();
  EXPECT_EQ(sheet.Count(WM_USER + 1), 0);
}

TEST_F(Win32Desktops, TheMouseComesAsMessagesWithPlaceAndButtons) {
  MakeSheet();
  MoveMouse(OnSheet(30, 20));
  EXPECT_GT(sheet.Count(WM_MOUSEMOVE), 0);
  EXPECT_GT(sheet.Count(WM_SETCURSOR), 0);
  Button(true);
  ASSERT_EQ(sheet.Count(WM_LBUTTONDOWN), 1);
  const auto& down = sheet.seen.at(static_cast<std::size_t>(sheet.At(WM_LBUTTONDOWN)));
  EXPECT_EQ(down.l, MAKELPARAM(30, 20));
  EXPECT_EQ(down.w & MK_LBUTTON, static_cast<WPARAM>(MK_LBUTTON));
  EXPECT_EQ(Desk().KeyState(VK_LBUTTON) & 0x8000, 0x8000);
  Button(false);
  EXPECT_EQ(sheet.Count(WM_LBUTTONUP), 1);
  EXPECT_EQ(Desk().KeyState(VK_LBUTTON) & 0x8000, 0);
  EXPECT_EQ(CPoint(Desk().CursorPosition()), OnSheet(30, 20));
  EXPECT_EQ(Desk().WindowAt(OnSheet(30, 20)), sheet.window);
}

TEST_F(Win32Desktops, TwoQuickClicksAreADoubleClick) {
  MakeSheet();
  Click(OnSheet(30, 20));
  Click(OnSheet(30, 20));
  EXPECT_EQ(sheet.Count(WM_LBUTTONDBLCLK), 1);
}

TEST_F(Win32Desktops, CaptureTakesTheMouseOutsideTheWindow) {
  MakeSheet();
  MoveMouse(OnSheet(30, 20));
  Button(true);
  Desk().SetCapture(sheet.window);
  EXPECT_EQ(Desk().Capture(), sheet.window);
  sheet.seen.clear();
  MoveMouse(OnSheet(-40, 200));
  ASSERT_GT(sheet.Count(WM_MOUSEMOVE), 0);
  const LPARAM at = sheet.seen.at(static_cast<std::size_t>(sheet.At(WM_MOUSEMOVE))).l;
  EXPECT_EQ(static_cast<SHORT>(LOWORD(at)), -40);
  EXPECT_EQ(static_cast<SHORT>(HIWORD(at)), 200);
  Button(false);
  EXPECT_EQ(sheet.Count(WM_LBUTTONUP), 1);
  Desk().SetCapture(nullptr);
  EXPECT_EQ(Desk().Capture(), nullptr);
  EXPECT_EQ(sheet.Count(WM_CAPTURECHANGED), 1);
}

TEST_F(Win32Desktops, TheLeavingMouseIsReportedOnceWhenAskedFor) {
  MakeSheet();
  MoveMouse(OnSheet(30, 20));
  sheet.Peer()->TrackLeave();
  MoveMouse(OnSheet(-50, -50));
  EXPECT_TRUE(Until([&] { return sheet.Count(WM_MOUSELEAVE) == 1; }));
  MoveMouse(OnSheet(30, 20));
  MoveMouse(OnSheet(-50, -50));
  Settle(150);
  EXPECT_EQ(sheet.Count(WM_MOUSELEAVE), 1);
}

TEST_F(Win32Desktops, HeldKeysAreDown) {
  EXPECT_EQ(Desk().KeyState(VK_CONTROL) & 0x8000, 0);
  KeyDown(VK_CONTROL);
  EXPECT_EQ(Desk().KeyState(VK_CONTROL) & 0x8000, 0x8000);
  KeyUp(VK_CONTROL);
  EXPECT_EQ(Desk().KeyState(VK_CONTROL) & 0x8000, 0);
}

TEST_F(Win32Desktops, CursorsGoByTheirNumbers) {
  for (const int shape :
       {lorv::kCursorSizeAcross, lorv::kCursorHand, lorv::kCursorCross, lorv::kCursorArrow}) {
    Desk().SetCursor(shape);
    EXPECT_EQ(Desk().Cursor(), shape);
  }
}

TEST_F(Win32Desktops, TimersTickUntilTheyAreKilled) {
  MakeSheet();
  sheet.Peer()->SetTimer(5, 20);
  EXPECT_TRUE(Until([&] { return sheet.Count(WM_TIMER) >= 3; }));
  EXPECT_EQ(sheet.seen.at(static_cast<std::size_t>(sheet.At(WM_TIMER))).w, 5u);
  EXPECT_TRUE(sheet.Peer()->KillTimer(5));
  EXPECT_FALSE(sheet.Peer()->KillTimer(5));
  Settle(20);
  const int ticks = sheet.Count(WM_TIMER);
  Settle(80);
  EXPECT_EQ(sheet.Count(WM_TIMER), ticks);
}

TEST_F(Win32Desktops, ATimerSetAgainStartsAnew) {
  MakeSheet();
  sheet.Peer()->SetTimer(5, 150);
  for (int i = 0; i < 4; ++i) {
    const DWORD start = Desk().Ticks();
    Until([&] { return Desk().Ticks() - start > 70; });
    sheet.Peer()->SetTimer(5, 150);
  }
  EXPECT_EQ(sheet.Count(WM_TIMER), 0);
  EXPECT_TRUE(Until([&] { return sheet.Count(WM_TIMER) == 1; }));
}

TEST_F(Win32Desktops, AModalDialogKeepsItsOwnerFromTheUser) {
  Probe dialog;
  dialog.Make(dialog.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP, {600, 300, 800, 400}, top.window));
  dialog.Peer()->Show(SW_SHOW);
  bool disabled = false;
  dialog.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_USER + 1) return false;
    disabled = (top.Peer()->Style() & WS_DISABLED) != 0;
    dialog.Peer()->Show(SW_HIDE);
    Desk().EndModal(dialog.window);
    return true;
  };
  Desk().Post(dialog.window, WM_USER + 1, 0, 0);
  Desk().RunModal(dialog.window);
  EXPECT_TRUE(disabled);
  EXPECT_EQ(top.Peer()->Style() & WS_DISABLED, 0u);
  EXPECT_EQ(Desk().Active(), top.window);
  EXPECT_TRUE(dialog.Peer()->Exists());
}

TEST_F(Win32Desktops, ModalLoopsNestAndEndWithTheirWindow) {
  Probe outer;
  Probe inner;
  std::string order;
  outer.Make(outer.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {600, 300, 800, 400},
                           top.window));
  inner.Make(inner.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {650, 350, 850, 450},
                           outer.window));
  outer.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_USER + 1) return false;
    Desk().RunModal(inner.window);
    order += "inner ended, ";
    Desk().EndModal(outer.window);
    return true;
  };
  inner.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_USER + 2) return false;
    inner.Peer()->Destroy();
    return true;
  };
  Desk().Post(outer.window, WM_USER + 1, 0, 0);
  Desk().Post(inner.window, WM_USER + 2, 0, 0);
  Desk().RunModal(outer.window);
  order += "outer ended";
  EXPECT_EQ(order, "inner ended, outer ended");
}

TEST_F(Win32Desktops, AModalLoopEndsWhenAnotherThreadsMessageDestroysItsWindow) {
  Probe dialog;
  dialog.Make(dialog.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {600, 300, 800, 400},
                             top.window));
  dialog.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_USER + 1) dialog.Peer()->Destroy();
    return false;
  };
  const HWND window = dialog.window;
  std::thread other([window] {
    Sleep(80);
    // Sent, not posted: the waiting loop sees no message of it.
    SendMessageW(window, WM_USER + 1, 0, 0);
  });
  Desk().RunModal(window);
  other.join();
  EXPECT_EQ(dialog.window, nullptr);
}

TEST_F(Win32Desktops, TheEndOfTheProgramEndsModalLoopsToo) {
  Probe dialog;
  dialog.Make(dialog.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {600, 300, 800, 400},
                             top.window));
  PostQuitMessage(3);
  Desk().RunModal(dialog.window);
  EXPECT_FALSE(Desk().Pump(true)) << "the outer loop is notified as well";
}

TEST_F(Win32Desktops, AnOwnerThatWasDisabledStaysSo) {
  Probe dialog;
  dialog.Make(dialog.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {600, 300, 800, 400},
                             top.window));
  top.Peer()->Enable(false);
  dialog.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_USER + 1) Desk().EndModal(dialog.window);
    return false;
  };
  Desk().Post(dialog.window, WM_USER + 1, 0, 0);
  Desk().RunModal(dialog.window);
  EXPECT_NE(top.Peer()->Style() & WS_DISABLED, 0u);
}

TEST_F(Win32Desktops, ClipboardKeepsTextUnitByUnit) {
  const TCHAR lone[] = {'a', 0xD800, 0x5899, 0};
  for (const CString& text :
       {CString(_T("KL12\t30\r\n")), CString(_T("墙")), CString(lone), CString(_T('x'), 200000)}) {
    EXPECT_TRUE(Desk().SetClipboardText(text));
    EXPECT_TRUE(Desk().HasClipboardText());
    EXPECT_EQ(Desk().ClipboardText(), text);
  }
  EXPECT_TRUE(Desk().SetClipboardText(_T("")));
  EXPECT_EQ(Desk().ClipboardText(), _T(""));
}

TEST_F(Win32Desktops, ClipboardWaitsForWhoHasItAndGivesUpInTheEnd) {
  ASSERT_TRUE(Desk().SetClipboardText(_T("before")));
  std::thread other([] {
    ASSERT_TRUE(OpenClipboard(nullptr));
    Sleep(60);
    CloseClipboard();
  });
  Sleep(20);
  EXPECT_EQ(Desk().ClipboardText(), _T("before"));
  other.join();
  std::atomic<bool> done{false};
  std::thread keeper([&] {
    ASSERT_TRUE(OpenClipboard(nullptr));
    while (!done) Sleep(5);
    CloseClipboard();
  });
  Sleep(20);
  EXPECT_FALSE(Desk().SetClipboardText(_T("refused")));
  EXPECT_EQ(Desk().ClipboardText(), _T(""));
  done = true;
  keeper.join();
  EXPECT_EQ(Desk().ClipboardText(), _T("before"));
}

TEST_F(Win32Desktops, KnowsItsKeyboardLayouts) {
  const auto layouts = Desk().Layouts();
  ASSERT_FALSE(layouts.empty());
  EXPECT_NE(std::find(layouts.begin(), layouts.end(), Desk().Layout()), layouts.end());
  EXPECT_EQ(Desk().ActivateLayout(reinterpret_cast<HKL>(static_cast<UINT_PTR>(0x7ABC7ABC)), 0), nullptr);
}

TEST_F(Win32Desktops, KnowsTheScreen) {
  EXPECT_EQ(CRect(Desk().Screen()), CRect(0, 0, 1280, 1024));
  const CRect work(Desk().WorkArea({10, 10}));
  EXPECT_FALSE(work.IsRectEmpty());
  CRect within;
  EXPECT_TRUE(within.IntersectRect(&work, CRect(Desk().Screen())));
  EXPECT_EQ(within, work);
  EXPECT_EQ(top.Peer()->Dpi(), 96);
  EXPECT_EQ(Desk().Colour(COLOR_WINDOW), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(Desk().Metric(SM_CXSCREEN), 1280);
  EXPECT_NE(Desk().DialogFont().lfHeight, 0);
}

TEST_F(Win32Desktops, NamedMessagesHaveOneNumber) {
  const UINT number = Desk().RegisterMessage(_T("LorvTestMessage"));
  EXPECT_GE(number, 0xC000u);
  EXPECT_EQ(Desk().RegisterMessage(_T("LorvTestMessage")), number);
  EXPECT_NE(Desk().RegisterMessage(_T("LorvTestMessage2")), number);
}

TEST_F(Win32Desktops, HandlesThatNameNothingAreAnsweredWithNothing) {
  const HWND none = reinterpret_cast<HWND>(static_cast<UINT_PTR>(0x7FFFFFF0));
  EXPECT_EQ(Desk().Find(nullptr), nullptr);
  EXPECT_EQ(Desk().Find(none), nullptr);
  EXPECT_EQ(Desk().Send(none, WM_USER, 0, 0), 0);
  EXPECT_FALSE(Desk().Post(none, WM_USER, 0, 0));
  Desk().RunModal(none);
  Desk().EndModal(none);
}

TEST_F(Win32Desktops, AnotherThreadsWindowInFrontHasTheFocus) {
  MakeSheet();
  EXPECT_EQ(Desk().Focus(), sheet.window);
  const OtherProgram other;
  EXPECT_TRUE(Until([&] { return other.IsInFront(); }));
  Settle();
  EXPECT_EQ(Desk().Focus(), other.Window());
  EXPECT_EQ(lorv::MappedWindow(Desk().Focus()), nullptr);
}

// The owner is below the dialog and disabled when the dialog goes: the system would rather take the next
// program.
TEST_F(Win32Desktops, AfterAModalDialogItsOwnerIsInFrontAndNoOtherProgram) {
  const OtherProgram other;
  EXPECT_TRUE(Until([&] { return other.IsInFront(); }));
  for (const bool destroys : {false, true}) {
    Probe dialog;
    dialog.Make(dialog.Request(WindowKind::Dialog, WS_CAPTION | WS_POPUP | WS_VISIBLE, {600, 300, 800, 400},
                               top.window));
    dialog.Peer()->Activate();
    Settle();
    const auto peer = dialog.Peer();
    dialog.on = [&](const Probe::Message& m, LRESULT&) {
      if (m.number != WM_USER + 1) return false;
      if (destroys) peer->Destroy();
      peer->Show(SW_HIDE);
      Desk().EndModal(dialog.window);
      return true;
    };
    Desk().Post(dialog.window, WM_USER + 1, 0, 0);
    Desk().RunModal(dialog.window);
    EXPECT_EQ(GetForegroundWindow(), top.window) << destroys;
    EXPECT_EQ(Desk().Active(), top.window) << destroys;
    Settle();
  }
}
