#include "platform/win32/controls/native_menu.h"

#include "platform/win32/desktop/message_pump.h"
#include "tests/platform/win32/real_input.h"

namespace {

lorv::MenuEntry Entry(UINT id, LPCTSTR text, UINT flags = MF_STRING) {
  lorv::MenuEntry entry;
  entry.id = id;
  entry.text = text;
  entry.flags = flags;
  return entry;
}

lorv::MenuModel Grades() {
  lorv::MenuModel menu;
  menu.entries = {Entry(11, _T("C2&0\tF5")), Entry(0, _T(""), MF_SEPARATOR), Entry(12, _T("C30"), MF_GRAYED),
                  Entry(13, _T("C40"), MF_CHECKED)};
  return menu;
}

}  // namespace

// A menu runs a loop of its own: what the user does is done by a timer of the window, while the menu is up.
class NativeMenus : public RealWindows {
 protected:
  static constexpr UINT_PTR kUser = 77;

  UINT Show(const lorv::MenuModel& menu, std::vector<int> keys, UINT flags = 0) {
    keys_ = std::move(keys);
    next_ = 0;
    top.on = [this](const Probe::Message& m, LRESULT&) {
      if (m.number == WM_TIMER && m.w == kUser) Step();
      return false;
    };
    top.Peer()->SetTimer(kUser, 60);
    const UINT chosen = Desk().Popup(menu, {200, 200}, flags, top.window);
    top.Peer()->KillTimer(kUser);
    top.on = nullptr;
    Settle();
    return chosen;
  }

  void Step() {
    if (next_ == 0) was_up_ = Desk().MenuUp();
    if (next_ == 0 && while_up_ != nullptr) while_up_();
    if (next_ < keys_.size()) {
      const int key = keys_[next_++];
      KeyDown(key);
      KeyUp(key);
    } else if (++next_ > keys_.size() + 20) {
      EndMenu();
    }
  }

  bool was_up_ = false;
  std::function<void()> while_up_;

 private:
  std::vector<int> keys_;
  std::size_t next_ = 0;
};

TEST_F(NativeMenus, GivesTheCommandChosenByKeys) {
  EXPECT_FALSE(Desk().MenuUp());
  EXPECT_EQ(Show(Grades(), {VK_DOWN, VK_RETURN}), 11u);
  EXPECT_TRUE(was_up_);
  EXPECT_FALSE(Desk().MenuUp());
  EXPECT_EQ(Show(Grades(), {VK_UP, VK_RETURN}), 13u);
}

TEST_F(NativeMenus, EscapeGivesNothing) {
  EXPECT_EQ(Show(Grades(), {VK_ESCAPE}), 0u);
}

TEST_F(NativeMenus, TheMarkedLetterChooses) {
  EXPECT_EQ(Show(Grades(), {'0'}), 11u);
}

TEST_F(NativeMenus, AGrayEntryCannotBeChosen) {
  lorv::MenuModel menu;
  menu.entries = {Entry(12, _T("C30"), MF_GRAYED)};
  EXPECT_EQ(Show(menu, {VK_DOWN, VK_RETURN, VK_ESCAPE}), 0u);
}

TEST_F(NativeMenus, SubmenusOpenAndChoose) {
  lorv::MenuModel menu = Grades();
  auto below = std::make_shared<lorv::MenuModel>();
  below->entries = {Entry(0x12345, _T("C50")), Entry(22, _T("C60"))};
  lorv::MenuEntry more = Entry(0, _T("more"));
  more.submenu = below;
  menu.entries.push_back(more);
  EXPECT_EQ(Show(menu, {VK_UP, VK_RIGHT, VK_DOWN, VK_RETURN}), 22u);
  EXPECT_EQ(Show(menu, {VK_UP, VK_RIGHT, VK_RETURN}), 0x12345u);
}

TEST_F(NativeMenus, ColumnBreaksMakeColumns) {
  lorv::MenuModel menu;
  for (UINT i = 0; i < 9; ++i)
    menu.entries.push_back(Entry(100 + i, _T("item"), i % 3 == 0 && i > 0 ? MF_MENUBARBREAK : 0));
  CRect window;
  while_up_ = [&] {
    const HWND shown = FindWindowW(L"#32768", nullptr);
    ASSERT_NE(shown, nullptr);
    GetWindowRect(shown, &window);
  };
  EXPECT_EQ(Show(menu, {VK_DOWN, VK_RIGHT, VK_RETURN}), 103u);
  menu.entries[3].flags = menu.entries[6].flags = 0;
  const CRect columns = window;
  EXPECT_EQ(Show(menu, {VK_DOWN, VK_RETURN}), 100u);
  EXPECT_GT(columns.Width(), 2 * window.Width());
  EXPECT_LT(columns.Height(), window.Height() / 2);
}

TEST_F(NativeMenus, AClickChooses) {
  while_up_ = [this] {
    CRect window;
    GetWindowRect(FindWindowW(L"#32768", nullptr), &window);
    SetCursorPos(window.left + 20, window.bottom - 12);
    INPUT click[2] = {};
    click[0].type = click[1].type = INPUT_MOUSE;
    click[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    click[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(2, click, sizeof(INPUT));
    while_up_ = nullptr;
  };
  EXPECT_EQ(Show(Grades(), {VK_SHIFT}), 13u);
}

// Return chose from the menu and moved the grid as well: that must not come back.
TEST_F(NativeMenus, NoClassIsOfferedAKeyWhileAMenuIsUp) {
  int taken = 0;
  top.Peer()->Focus();
  Settle();
  top.take = [&](MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    ++taken;
    return true;
  };
  EXPECT_EQ(Show(Grades(), {VK_DOWN, VK_RETURN}), 11u);
  EXPECT_EQ(taken, 0);
  Press(VK_RETURN);
  EXPECT_EQ(taken, 1) << "and is offered keys again afterwards";
}

TEST_F(NativeMenus, TheOwnerIsNotAskedToFillTheMenu) {
  top.seen.clear();
  Show(Grades(), {VK_ESCAPE});
  EXPECT_EQ(top.Count(WM_INITMENUPOPUP), 0);
  EXPECT_EQ(top.Count(WM_COMMAND), 0);
}

// The system's menu takes the message off the queue and goes on.
TEST_F(NativeMenus, TheEndOfTheProgramClosesItAndComesToTheLoopAround) {
  top.on = [this](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_TIMER && m.w == kUser) Desk().Quit(8);
    if (m.number == WM_TIMER) top.Peer()->KillTimer(kUser);
    return false;
  };
  top.Peer()->SetTimer(kUser, 60);
  EXPECT_EQ(Desk().Popup(Grades(), {200, 200}, 0, top.window), 0u);
  EXPECT_FALSE(Desk().MenuUp());
  bool ended = false;
  for (int i = 0; i < 100 && !ended; ++i) ended = !Desk().Pump(true);
  EXPECT_TRUE(ended);
  EXPECT_EQ(Desk().QuitCode(), 8);
  top.on = nullptr;
  Settle();
  EXPECT_EQ(Show(Grades(), {VK_DOWN, VK_RETURN}), 11u) << "who goes on has menus as ever";
}

TEST_F(NativeMenus, AnEmptyMenuGivesNothingAtOnce) {
  EXPECT_EQ(Desk().Popup({}, {200, 200}, 0, top.window), 0u);
}

TEST_F(NativeMenus, WithoutAnOwnerItWorksAsWell) {
  top.on = [this](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_TIMER) SendKey(VK_ESCAPE, 0), SendKey(VK_ESCAPE, KEYEVENTF_KEYUP);
    return false;
  };
  top.Peer()->SetTimer(kUser, 60);
  EXPECT_EQ(Desk().Popup(Grades(), {200, 200}, 0, nullptr), 0u);
  top.Peer()->KillTimer(kUser);
  top.on = nullptr;
}

// An owner that a modal dialog keeps from the user would take the keys from the dialog.
TEST_F(NativeMenus, AnOwnerBelowAModalDialogStaysBelow) {
  Probe dialog;
  dialog.Make(dialog.Request(lorv::WindowKind::Top, WS_POPUP | WS_CAPTION | WS_VISIBLE, {300, 300, 500, 400},
                             top.window));
  dialog.Peer()->Activate();
  top.Peer()->Enable(false);
  Settle();
  ASSERT_EQ(GetForegroundWindow(), dialog.window);
  HWND in_front = nullptr;
  while_up_ = [&] { in_front = GetForegroundWindow(); };
  EXPECT_EQ(Show(Grades(), {VK_DOWN, VK_RETURN}), 11u);
  EXPECT_EQ(in_front, dialog.window);
  EXPECT_EQ(GetActiveWindow(), dialog.window);
  // Enabled, it comes in front as ever.
  top.Peer()->Enable(true);
  EXPECT_EQ(Show(Grades(), {VK_ESCAPE}), 0u);
  EXPECT_EQ(in_front, top.window);
  dialog.Peer()->Destroy();
}

TEST_F(NativeMenus, TheOwnerMayGoWhileTheMenuIsUp) {
  Probe owner;
  owner.Make(owner.Request(lorv::WindowKind::Top, WS_CAPTION | WS_VISIBLE, {600, 100, 800, 200}, nullptr));
  owner.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_TIMER) owner.Peer()->Destroy();
    return false;
  };
  owner.Peer()->SetTimer(kUser, 60);
  EXPECT_EQ(Desk().Popup(Grades(), {200, 200}, 0, owner.window), 0u);
  EXPECT_FALSE(Desk().MenuUp());
}
