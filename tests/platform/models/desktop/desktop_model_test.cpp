#include "platform/models/desktop/desktop_model.h"

#include <functional>
#include <stdexcept>

#include "tests/support/headless_desk.h"

// The behaviour of windows and desktops where handlers throw, seen on the headless peer.

namespace {

using lorv_test::Notes;

// Does what the test wants in the middle of a message.
class Wild : public lorv_test::NotingWindow {
 public:
  std::function<void(UINT)> on;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    const auto reaction = on;
    if (reaction) reaction(message);
    return NotingWindow::WindowProc(message, w, l);
  }
};

std::function<void(UINT)> ThrowAt(UINT wanted) {
  return [wanted](UINT message) {
    if (message == wanted) throw std::runtime_error("handler");
  };
}

class DesktopModel : public lorv_test::Desk {
 protected:
  DesktopModel() { child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(10, 10, 60, 60), &top, 1); }

  Wild child;
};

}  // namespace

TEST_F(DesktopModel, OwnerIsEnabledAgainThoughAHandlerThrows) {
  Wild dialog;
  dialog.Create(nullptr, nullptr, WS_POPUP | WS_CAPTION | WS_VISIBLE, CRect(0, 0, 90, 90), &top, 0);
  dialog.on = ThrowAt(WM_USER);
  dialog.PostMessage(WM_USER);
  EXPECT_THROW(desktop.RunModal(dialog.m_hWnd), std::runtime_error);
  EXPECT_NE(top.IsWindowEnabled(), 0);
  // The dialog is none any more that a loop waits for.
  dialog.on = nullptr;
  desktop.WhenIdle([&] { desktop.EndModal(dialog.m_hWnd); });
  desktop.RunModal(dialog.m_hWnd);
  EXPECT_NE(top.IsWindowEnabled(), 0);
}

TEST_F(DesktopModel, EndOfTheProgramLeavesAllLoopsWithItsCode) {
  EXPECT_FALSE(desktop.QuitCode().has_value());
  Wild outer;
  Wild inner;
  outer.Create(nullptr, nullptr, WS_POPUP | WS_CAPTION | WS_VISIBLE, CRect(0, 0, 90, 90), &top, 0);
  inner.Create(nullptr, nullptr, WS_POPUP | WS_CAPTION | WS_VISIBLE, CRect(0, 0, 90, 90), &outer, 0);
  outer.on = [&](UINT message) {
    if (message == WM_USER) desktop.RunModal(inner.m_hWnd);
  };
  inner.on = [&](UINT message) {
    if (message == WM_USER) desktop.Quit(7);
  };
  outer.PostMessage(WM_USER);
  inner.PostMessage(WM_USER);
  desktop.RunModal(outer.m_hWnd);
  EXPECT_NE(top.IsWindowEnabled(), 0);
  while (desktop.Pump(false)) {
  }
  EXPECT_EQ(desktop.QuitCode(), 7);
}

TEST_F(DesktopModel, WindowEndsThoughItsHandlersThrow) {
  for (const UINT message : {UINT{WM_DESTROY}, UINT{WM_NCDESTROY}}) {
    Wild window;
    window.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &top, 2);
    CWnd inner;
    inner.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &window, 3);
    const HWND handle = window.m_hWnd;
    window.on = ThrowAt(message);
    EXPECT_THROW(window.DestroyWindow(), std::runtime_error);
    EXPECT_EQ(desktop.Find(handle), nullptr);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(inner.m_hWnd, nullptr);
    EXPECT_EQ(top.GetDlgItem(2), nullptr);
  }
}

TEST_F(DesktopModel, NewFocusHearsOfItThoughTheFormerThrows) {
  Wild other;
  other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &top, 2);
  child.SetFocus();
  child.on = ThrowAt(WM_KILLFOCUS);
  int reported = 0;
  other.on = [&](UINT message) { reported += message == WM_SETFOCUS ? 1 : 0; };
  EXPECT_THROW(other.SetFocus(), std::runtime_error);
  EXPECT_EQ(reported, 1);
  EXPECT_EQ(CWnd::GetFocus(), &other);
}

TEST_F(DesktopModel, WindowWhoseMakingThrowsIsNone) {
  Wild window;
  window.on = ThrowAt(WM_CREATE);
  EXPECT_THROW(window.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 9, 9), &top, 2), std::runtime_error);
  EXPECT_EQ(window.m_hWnd, nullptr);
  EXPECT_EQ(top.GetDlgItem(2), nullptr);
}

TEST_F(DesktopModel, DraggedBarReportsAllOfItsPlace) {
  SCROLLINFO info = {sizeof(SCROLLINFO), SIF_RANGE | SIF_PAGE, 0, 1000000, 100, 0, 0};
  child.SetScrollInfo(SB_VERT, &info);
  std::vector<int> places;
  child.on = [&](UINT message) {
    SCROLLINFO now = {};
    child.GetScrollInfo(SB_VERT, &now);
    if (message == WM_VSCROLL) places.push_back(now.nTrackPos);
  };
  desktop.ScrollBar(child.m_hWnd, SB_VERT, SB_THUMBTRACK, 500000);
  desktop.ScrollBar(child.m_hWnd, SB_VERT, SB_THUMBPOSITION, 600000);
  desktop.ScrollBar(child.m_hWnd, SB_VERT, SB_ENDSCROLL);
  Run();
  EXPECT_EQ(places, (std::vector<int>{500000, 600000, 0}));
}

TEST_F(DesktopModel, CompositionComesAsMessagesAndThenAsCharacters) {
  std::vector<std::string> reported;
  child.SetFocus();
  child.on = [&](UINT message) {
    const lorv::Composition now = lorv::PeerOf(child.m_hWnd)->CompositionNow();
    if (message == WM_IME_STARTCOMPOSITION) reported.push_back("start");
    if (message == WM_IME_COMPOSITION)
      reported.push_back(now.text.ToUtf8() + " " + std::to_string(now.caret) + " " + now.committed.ToUtf8());
    if (message == WM_IME_ENDCOMPOSITION) reported.push_back("end");
    if (message == WM_CHAR) reported.push_back("char");
  };
  desktop.ComposeText(_T("qiang"), 5);
  desktop.CommitText(_T("墙"));
  Run();
  EXPECT_EQ(reported, (Notes{"start", "qiang 5 ", " 0 墙", "end", "char"}));
}

TEST_F(DesktopModel, CompositionGoesOnInTheEditThatWasOpenedForIt) {
  CEdit edit;
  child.SetFocus();
  child.on = [&](UINT message) {
    if (message != WM_IME_STARTCOMPOSITION) return;
    edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &top, 5);
    edit.SetFocus();
  };
  desktop.ComposeText(_T("q"), 1);
  desktop.CommitText(_T("墙"));
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("墙")));
}
