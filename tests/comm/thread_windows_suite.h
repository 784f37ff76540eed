#pragma once

#include <algorithm>

#include "module/scope_markers.h"
#include "platform/ports/platform.h"
#include "tests/comm/thread_windows_scene.h"
#include "tests/support/print.h"

// The same tests for every kind of desktop: each instantiates them with what makes its own.
namespace lorv_test {

using lorv::WindowKind;
using lorv::test::Utf8;

template <class Maker>
class ThreadWindows : public WindowsOfThread {
 protected:
  ThreadWindows() : WindowsOfThread(Maker::Make()) {}
};

TYPED_TEST_SUITE_P(ThreadWindows);

TYPED_TEST_P(ThreadWindows, TheTopmostDialogWithTheTextIsFound) {
  Panel below;
  Panel frame(WindowKind::Custom);
  Panel above;
  below.Open(_T("首层 项目列表区 (2)"));
  above.Open(_T("项目列表区"));
  frame.Open(_T("项目列表区"));
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("列表")), &above) << "the frame is no dialog";
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("(2)")), &below);
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("回路核查")), nullptr);
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("")), &above) << "every title contains it";
  EXPECT_EQ(OpenedComm::FindWindowExist(_T("列表")), &above);
  above.DestroyWindow();
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("列表")), &below);
}

TYPED_TEST_P(ThreadWindows, TitlesAreComparedByLetterCase) {
  Panel dialog;
  dialog.Open(_T("Circuit Check"));
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("Circuit")), &dialog);
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("circuit")), nullptr);
}

TYPED_TEST_P(ThreadWindows, AHiddenDialogIsFoundAndShownWhenAskedForByTitle) {
  Panel dialog;
  dialog.Open(_T("回路核查"), false);
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("回路核查")), &dialog);
  EXPECT_EQ(dialog.IsWindowVisible(), 0);
  EXPECT_FALSE(CAdLorvComm::IsWindowTitleExist(_T("核查回路")));
  EXPECT_EQ(dialog.IsWindowVisible(), 0);
  EXPECT_TRUE(CAdLorvComm::IsWindowTitleExist(_T("回路核查")));
  EXPECT_NE(dialog.IsWindowVisible(), 0);
}

TYPED_TEST_P(ThreadWindows, AWindowIsFoundByItsRunTimeClass) {
  Panel other;
  CDlgReback dialog;
  CDlgReback frame(WindowKind::Custom);
  other.Open(_T("CDlgReback"));
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CDlgReback")), nullptr);
  dialog.Open(_T("a"), false);
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CDlgReback")), dialog.m_hWnd);
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("cDLGrEBACK")), dialog.m_hWnd);
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CDlgReb")), nullptr);
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("")), nullptr);
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(static_cast<LPCTSTR>(nullptr)), nullptr);
  dialog.DestroyWindow();
  frame.Open(_T("b"));
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CDlgReback")), frame.m_hWnd);
}

TYPED_TEST_P(ThreadWindows, AWindowWithoutAnObjectIsOfThePlainClass) {
  Panel dialog;
  dialog.Open(_T("墙"));
  const HWND window = dialog.Detach();
  EXPECT_EQ(CAdLorvComm::IsWindowClassExist(_T("CWnd")), window);
  dialog.Attach(window);
}

TYPED_TEST_P(ThreadWindows, WithoutASearchTheWalkStops) {
  Panel dialog;
  dialog.Open(_T("墙"));
  EXPECT_EQ(OpenedComm::EnumWindowsTitleProc(dialog.m_hWnd, 0), 0);
  EXPECT_EQ(OpenedComm::EnumWindowsClassProc(dialog.m_hWnd, 0), 0);
  EXPECT_EQ(OpenedComm::CloseWindowProc(nullptr, 0), 1);
  EXPECT_EQ(OpenedComm::CloseWindowProc(nullptr, 1), 1);
}

TYPED_TEST_P(ThreadWindows, ClosingAsksTheVisibleDialogsByAPostedMessage) {
  Panel dialog;
  Panel hidden;
  Panel frame(WindowKind::Custom);
  dialog.Open(_T("墙"));
  hidden.Open(_T("梁"), false);
  frame.Open(_T("框架"));
  EXPECT_EQ(CAdLorvComm::CloseWindow(false), 1);
  EXPECT_EQ(dialog.notes, Notes{}) << "posted, not sent";
  this->Settle();
  EXPECT_EQ(dialog.notes, Notes{"close 16 16"});
  EXPECT_FALSE(this->Stands(dialog));
  EXPECT_EQ(hidden.notes, Notes{});
  EXPECT_EQ(frame.notes, Notes{});
}

TYPED_TEST_P(ThreadWindows, ClosingAllAsksEveryVisibleWindow) {
  Panel dialog;
  Panel hidden;
  Panel frame(WindowKind::Custom);
  dialog.Open(_T("墙"));
  hidden.Open(_T("梁"), false);
  frame.Open(_T("框架"));
  frame.refuses = true;
  EXPECT_EQ(CAdLorvComm::CloseWindow(true), 1);
  this->Settle();
  EXPECT_EQ(dialog.notes, Notes{"close 16 16"});
  EXPECT_EQ(hidden.notes, Notes{});
  EXPECT_EQ(frame.notes, Notes{"close 16 16"});
}

TYPED_TEST_P(ThreadWindows, WithoutWindowsClosingGivesNothing) {
  ASSERT_TRUE(this->Desk().Windows().empty());
  EXPECT_EQ(CAdLorvComm::CloseWindow(true), 0);
  EXPECT_EQ(CAdLorvComm::CloseWindow(false), 0);
  EXPECT_EQ(CAdLorvComm::GetWindowExist(_T("")), nullptr);
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(_T("")), nullptr);
  EXPECT_FALSE(CAdLorvComm::RefreshDefNum());
  CAdLorvComm::RefeshDlgHLCheck();
}

TYPED_TEST_P(ThreadWindows, TheProjectSettingsStopTheClosing) {
  for (const bool visible : {true, false}) {
    Panel behind;
    Panel settings;
    Panel before;
    behind.Open(_T("墙"));
    settings.Open(_T("工程设置 - 住宅"), visible);
    before.Open(_T("梁"));
    EXPECT_EQ(CAdLorvComm::CloseWindow(false), 0);
    this->Settle();
    EXPECT_EQ(behind.notes, Notes{}) << visible;
    EXPECT_EQ(settings.notes, Notes{}) << visible;
    EXPECT_EQ(before.notes, Notes{"close 16 16"}) << visible;
    // First in the order they keep everything. A hidden window has stepped behind the next active one.
    settings.BringWindowToTop();
    EXPECT_EQ(CAdLorvComm::CloseWindow(true), 0);
    this->Settle();
    EXPECT_EQ(behind.notes, Notes{}) << visible;
  }
}

TYPED_TEST_P(ThreadWindows, AFrameWithTheWordsOfTheSettingsStopsOnlyTheClosingOfAll) {
  Panel dialog;
  Panel frame(WindowKind::Custom);
  dialog.Open(_T("墙"));
  frame.Open(_T("工程设置"));
  EXPECT_EQ(CAdLorvComm::CloseWindow(true), 0);
  this->Settle();
  EXPECT_EQ(dialog.notes, Notes{});
  EXPECT_EQ(CAdLorvComm::CloseWindow(false), 1);
  this->Settle();
  EXPECT_EQ(dialog.notes, Notes{"close 16 16"});
}

TYPED_TEST_P(ThreadWindows, TheSettingsAreLookedForInTheFirst259UnitsOfATitle) {
  for (const int length : {258, 259, 260}) {
    Panel dialog;
    dialog.Open(CString(_T('x'), length - 4) + _T("工程设置"));
    EXPECT_EQ(CAdLorvComm::CloseWindow(false), length > 259 ? 1 : 0) << length;
    this->Settle();
    EXPECT_EQ(this->Stands(dialog), length <= 259) << length;
  }
}

TYPED_TEST_P(ThreadWindows, AWindowThatGoesWhileOthersAreAskedIsNotMissed) {
  Panel below;
  Panel above;
  below.Open(_T("墙"));
  above.Open(_T("梁"));
  above.takes_along = &below;
  EXPECT_EQ(CAdLorvComm::CloseWindow(false), 1);
  this->Settle();
  EXPECT_FALSE(this->Stands(above));
  EXPECT_EQ(below.notes, Notes{});
}

TYPED_TEST_P(ThreadWindows, TheControlBarIsFoundByWhatStandsInIt) {
  Panel frame(WindowKind::Custom);
  Panel plain(WindowKind::Custom);
  Panel empty(WindowKind::Custom);
  Panel bar(WindowKind::Custom);
  Panel in_plain(WindowKind::Custom);
  Panel in_bar(WindowKind::Custom);
  Panel deeper(WindowKind::Custom);
  frame.Open(_T("布置实体"));
  plain.OpenIn(frame, _T("SuitePanel"), _T("布置实体"));
  in_plain.OpenIn(plain, nullptr, _T("布置实体"));
  empty.OpenIn(frame, _T("SuiteControlBar1"), _T("布置实体"));
  bar.OpenIn(frame, _T("SuiteControlBar2"), _T(""));
  in_bar.OpenIn(bar, nullptr, _T("布置实体 (墙)"));
  deeper.OpenIn(in_bar, nullptr, _T("内层"));
  ASSERT_EQ(CWnd::GetActiveWindow(), &frame);
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(_T("布置实体")), &bar);
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(_T("内层")), nullptr) << "direct children only";
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(_T("")), &bar);
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(nullptr), nullptr);
  Panel dialog;
  dialog.Open(_T("墙"));
  ASSERT_EQ(CWnd::GetActiveWindow(), &dialog);
  EXPECT_EQ(CAdLorvComm::GetDrawControlBar(_T("布置实体")), nullptr) << "of the active window only";
}

// The frame is the active window when the panels are refreshed.
struct Panels {
  Panel frame{WindowKind::Custom};
  Panel bar{WindowKind::Custom};
  Panel in_bar{WindowKind::Custom};
  Panel list;
  CDlgReback first;
  CDlgReback second;
  Panels() {
    list.Open(_T("项目列表区"));
    first.Open(_T("恢复"));
    second.Open(_T("恢复"), false);
    frame.Open(_T("主窗口"));
    bar.OpenIn(frame, _T("SuiteControlBar"), _T(""));
    in_bar.OpenIn(bar, nullptr, _T("布置实体"));
  }
};

TYPED_TEST_P(ThreadWindows, CountingAnewRefreshesThePanelsAndClosesTheDialogs) {
  Panels panels;
  EXPECT_FALSE(CAdLorvComm::RefreshDefNum());
  // The restore dialogs were sent what the others wait for.
  EXPECT_FALSE(this->Stands(panels.first));
  EXPECT_FALSE(this->Stands(panels.second));
  EXPECT_EQ(panels.first.notes, Notes{"close 16 16"});
  EXPECT_EQ(panels.second.notes, Notes{"close 16 16"});
  EXPECT_EQ(panels.list.notes, Notes{});
  this->Settle();
  EXPECT_EQ(panels.bar.notes, Notes{"refresh 0 0"});
  EXPECT_EQ(panels.in_bar.notes, Notes{});
  EXPECT_EQ(panels.list.notes, (Notes{"refresh 0 0", "close 16 16"}));
  EXPECT_EQ(panels.frame.notes, Notes{});
  EXPECT_TRUE(this->Stands(panels.frame));
}

TYPED_TEST_P(ThreadWindows, CountingAnewDoesNothingWhileAProjectIsOpen) {
  Panels panels;
  {
    const TOpenProject open;
    EXPECT_FALSE(CAdLorvComm::RefreshDefNum());
  }
  this->Settle();
  for (const Panel* panel : {&panels.bar, &panels.list, static_cast<Panel*>(&panels.first)})
    EXPECT_EQ(panel->notes, Notes{});
  EXPECT_TRUE(this->Stands(panels.first));
}

TYPED_TEST_P(ThreadWindows, ARestoreDialogThatRefusesEndsTheClosing) {
  Panels panels;
  panels.second.refuses = true;
  panels.first.refuses = true;
  // Behind the settings, so that the closing before does not reach them.
  Panel settings;
  settings.Open(_T("工程设置"));
  EXPECT_FALSE(CAdLorvComm::RefreshDefNum());
  this->Settle();
  EXPECT_EQ(panels.first.notes.size() + panels.second.notes.size(), 1U) << "the first found, once";
}

TYPED_TEST_P(ThreadWindows, ARestoreDialogMayTakeAnotherAlong) {
  Panels panels;
  panels.second.takes_along = &panels.first;
  panels.first.takes_along = &panels.second;
  EXPECT_FALSE(CAdLorvComm::RefreshDefNum());
  EXPECT_FALSE(this->Stands(panels.first));
  EXPECT_FALSE(this->Stands(panels.second));
}

TYPED_TEST_P(ThreadWindows, TheCircuitCheckIsRefreshed) {
  Panel other;
  Panel check;
  other.Open(_T("墙"));
  check.Open(_T("回路核查"), false);
  CAdLorvComm::RefeshDlgHLCheck();
  EXPECT_EQ(check.notes, Notes{});
  this->Settle();
  EXPECT_EQ(check.notes, Notes{"refresh 0 0"});
  EXPECT_EQ(other.notes, Notes{});
}

TYPED_TEST_P(ThreadWindows, ControlsAreFilledAnewWithoutQuestionMarks) {
  Panel frame(WindowKind::Custom);
  frame.Open(_T("框架"));
  CComboBox combo;
  CListBox list;
  ASSERT_NE(combo.Create(WS_CHILD | CBS_DROPDOWNLIST, CRect(0, 0, 90, 90), &frame, 1), 0);
  ASSERT_NE(list.Create(WS_CHILD, CRect(0, 0, 90, 90), &frame, 2), 0);
  combo.AddString(_T("old"));
  list.AddString(_T("old"));
  CStringArray texts;
  for (LPCTSTR text : {_T("b"), _T("?"), _T("a"), _T("??"), _T("？"), _T(""), _T("?")}) texts.Add(text);
  CAdLorvComm::AddComboxItem(combo, texts);
  CAdLorvComm::AddComboxItem(list, texts);
  ASSERT_EQ(combo.GetCount(), 5);
  ASSERT_EQ(list.GetCount(), 5);
  int at = 0;
  for (const char* expected : {"b", "a", "??", "？", ""}) {
    CString in_combo;
    CString in_list;
    combo.GetLBText(at, in_combo);
    list.GetText(at, in_list);
    EXPECT_EQ(Utf8(in_combo), expected);
    EXPECT_EQ(Utf8(in_list), expected);
    ++at;
  }
  texts.RemoveAll();
  CAdLorvComm::AddComboxItem(combo, texts);
  CAdLorvComm::AddComboxItem(list, texts);
  EXPECT_EQ(combo.GetCount(), 0);
  EXPECT_EQ(list.GetCount(), 0);
}

TYPED_TEST_P(ThreadWindows, APlaceIsLimitedByTheDesktopOfTheWindows) {
  const CRect desktop(lorv::PortsInForce().shell->DesktopRect());
  CString text;
  CRect rect;
  int show_state = 0;
  CAdLorvComm::WndPosFromRectToString(text, CRect(CPoint(10, desktop.bottom - 10), CSize(90, 90)), 3);
  EXPECT_TRUE(CAdLorvComm::WndPosFromStringToRect(text, rect, show_state)) << Utf8(text);
  CAdLorvComm::WndPosFromRectToString(text, CRect(CPoint(10, desktop.bottom - 9), CSize(90, 90)), 3);
  EXPECT_FALSE(CAdLorvComm::WndPosFromStringToRect(text, rect, show_state)) << Utf8(text);
}

REGISTER_TYPED_TEST_SUITE_P(ThreadWindows, TheTopmostDialogWithTheTextIsFound, TitlesAreComparedByLetterCase,
                            AHiddenDialogIsFoundAndShownWhenAskedForByTitle, AWindowIsFoundByItsRunTimeClass,
                            AWindowWithoutAnObjectIsOfThePlainClass, WithoutASearchTheWalkStops,
                            ClosingAsksTheVisibleDialogsByAPostedMessage, ClosingAllAsksEveryVisibleWindow,
                            WithoutWindowsClosingGivesNothing, TheProjectSettingsStopTheClosing,
                            AFrameWithTheWordsOfTheSettingsStopsOnlyTheClosingOfAll,
                            TheSettingsAreLookedForInTheFirst259UnitsOfATitle,
                            AWindowThatGoesWhileOthersAreAskedIsNotMissed,
                            TheControlBarIsFoundByWhatStandsInIt,
                            CountingAnewRefreshesThePanelsAndClosesTheDialogs,
                            CountingAnewDoesNothingWhileAProjectIsOpen,
                            ARestoreDialogThatRefusesEndsTheClosing, ARestoreDialogMayTakeAnotherAlong,
                            TheCircuitCheckIsRefreshed, ControlsAreFilledAnewWithoutQuestionMarks,
                            APlaceIsLimitedByTheDesktopOfTheWindows);

}  // namespace lorv_test
