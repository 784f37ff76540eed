#include <stdexcept>

#include "platform/win32/desktop/message_pump.h"
#include "tests/platform/win32/real_input.h"

using lorv::WindowKind;

class MessageHook : public RealWindows {
 protected:
  // A loop as a host's, which knows nothing of us.
  void HostLoop(DWORD milliseconds, bool asks) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < milliseconds) {
      MSG message = {};
      if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        Sleep(2);
        continue;
      }
      if (asks && lorv::OfferHostMessage(&message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
  int Offered(const Probe& probe, UINT message) {
    return static_cast<int>(std::count_if(probe.offered.begin(), probe.offered.end(),
                                          [=](const MSG& m) { return m.message == message; }));
  }
};

TEST_F(MessageHook, AKeyThatWasTakenBecomesNoCharacter) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  top.take = [](MSG& message) { return message.message == WM_KEYDOWN && message.wParam == 'B'; };
  Type(_T("ABC"));
  EXPECT_EQ(edit.Peer()->Text(), _T("ac"));
  EXPECT_EQ(edit.Count(WM_KEYDOWN), 2);
  EXPECT_EQ(edit.Count(WM_NULL), 0);
}

TEST_F(MessageHook, AsksTheWindowBeforeItsParents) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  edit.take = [](MSG& message) { return message.message == WM_KEYDOWN; };
  top.offered.clear();
  Press(VK_TAB);
  EXPECT_EQ(Offered(edit, WM_KEYDOWN), 1);
  EXPECT_EQ(Offered(top, WM_KEYDOWN), 0);
  EXPECT_EQ(Offered(top, WM_KEYUP), 1);
}

TEST_F(MessageHook, SeesMessagesOfALoopThatIsNotOurs) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  Settle();
  edit.offered.clear();
  top.take = [](MSG& message) { return message.message == WM_KEYDOWN && message.wParam == 'X'; };
  for (const int key : {'X', 'Y'}) {
    KeyDown(key);
    KeyUp(key);
  }
  HostLoop(80, false);
  EXPECT_EQ(edit.Peer()->Text(), _T("y"));
  EXPECT_EQ(Offered(edit, WM_KEYDOWN), 2);
}

TEST_F(MessageHook, AHostThatAsksItselfOffersNothingTwice) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  Settle();
  edit.offered.clear();
  top.take = [](MSG& message) { return message.message == WM_KEYDOWN && message.wParam == 'X'; };
  for (const int key : {'X', 'Y', 'Y'}) {
    KeyDown(key);
    KeyUp(key);
  }
  HostLoop(80, true);
  EXPECT_EQ(edit.Peer()->Text(), _T("yy"));
  EXPECT_EQ(Offered(edit, WM_KEYDOWN), 3);
}

TEST_F(MessageHook, HeaderExample) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.take = [](MSG& message) { return message.message == WM_USER; };
  MSG reported = {};
  reported.hwnd = edit.window;
  reported.message = WM_USER;
  EXPECT_TRUE(lorv::OfferHostMessage(&reported));
  reported.hwnd = edit.window;
  reported.message = WM_USER + 1;
  EXPECT_FALSE(lorv::OfferHostMessage(&reported));
  EXPECT_EQ(reported.message, static_cast<UINT>(WM_USER + 1));
  EXPECT_FALSE(lorv::OfferHostMessage(nullptr));
}

TEST_F(MessageHook, WhoOnlyLooksIsNotAsked) {
  Settle();
  Desk().Post(top.window, WM_USER + 5, 0, 0);
  top.offered.clear();
  MSG message = {};
  EXPECT_TRUE(PeekMessageW(&message, top.window, WM_USER + 5, WM_USER + 5, PM_NOREMOVE));
  EXPECT_TRUE(PeekMessageW(&message, top.window, WM_USER + 5, WM_USER + 5, PM_NOREMOVE));
  EXPECT_EQ(Offered(top, WM_USER + 5), 0);
  Settle();
  EXPECT_EQ(Offered(top, WM_USER + 5), 1);
}

TEST_F(MessageHook, TakersMayDestroyTheWindowTheyStandIn) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  Settle();
  edit.take = [&](MSG& message) {
    if (message.message == WM_KEYDOWN) edit.Peer()->Destroy();
    return false;
  };
  top.offered.clear();
  Type(_T("A"));
  EXPECT_EQ(edit.window, nullptr);
  EXPECT_EQ(Offered(top, WM_KEYDOWN), 1) << "the parents are asked on";
}

TEST_F(MessageHook, AnExceptionOfATakerReachesTheLoopAndEndsTheMessage) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  Settle();
  top.take = [](MSG& message) -> bool {
    if (message.message == WM_KEYDOWN) throw std::runtime_error("taker");
    return false;
  };
  KeyDown('A');
  EXPECT_THROW(Settle(), std::runtime_error);
  KeyUp('A');
  top.take = nullptr;
  Settle();
  EXPECT_TRUE(edit.Peer()->Text().IsEmpty());
}
