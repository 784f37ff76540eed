#include <gtest/gtest.h>

#include "tests/gridcore/control/grid_desk.h"

namespace {

using GridEditing = lorv_test::GridDesk;
using lorv_test::Notes;
using Cell = CBCGPGridItemID;

}  // namespace

TEST_F(GridEditing, F2OpensWithTheWholeTextSelected) {
  Fill(2, 2);
  Choose(1, 1);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("11"));
  int start = -1;
  int end = -1;
  Editor()->GetSel(start, end);
  EXPECT_EQ(start, 0);
  EXPECT_EQ(end, 2);
  EXPECT_EQ(CWnd::GetFocus(), Editor());
  EXPECT_EQ(Editor()->GetDlgCtrlID(), 1);
  EXPECT_EQ(At(1, 1)->GetInPlaceWnd(), Editor());
  EXPECT_EQ(grid->GetRow(1)->GetInPlaceWnd(), Editor());
  EXPECT_EQ(grid->GetRow(0)->GetInPlaceWnd(), nullptr);
}

TEST_F(GridEditing, TypedCharacterTakesThePlaceOfTheText) {
  Fill(2, 2);
  Choose(0, 1);
  desktop.Type(_T("78"));
  Run();
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("78"));
  Key(VK_RETURN);
  EXPECT_EQ(At(0, 1)->GetValue(), _variant_t(78));
}

TEST_F(GridEditing, ReturnSavesAndGoesDown) {
  Fill(3, 2);
  Choose(0, 0);
  desktop.Type(_T("5"));
  Run();
  grid->Taken();
  Key(VK_RETURN);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(CWnd::GetFocus(), grid.get());
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 0));
  EXPECT_EQ(grid->Taken(),
            (Notes{"changed 0,0 5", "ended", "leaving 0,0", "left 0,0", "choosing 1,0", "chosen 1,0"}));
}

TEST_F(GridEditing, UnchangedTextIsNoChange) {
  Fill(3, 2);
  Choose(0, 0);
  grid->notes_only_end = true;
  Key(VK_F2);
  Key(VK_RETURN);
  EXPECT_EQ(grid->Taken(), (Notes{"ended"}));
}

TEST_F(GridEditing, EscapeDropsWhatWasTyped) {
  Fill(2, 2);
  Choose(0, 0);
  desktop.Type(_T("5"));
  Key(VK_ESCAPE);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(At(0, 0)->GetValue(), _variant_t(0));
  EXPECT_EQ(grid->Taken(), Notes{});
}

TEST_F(GridEditing, LockedCellsDoNotOpen) {
  Fill(2, 4);
  At(0, 0)->SetReadOnly();
  At(0, 1)->AllowEdit(FALSE);
  At(0, 2)->Enable(FALSE);
  for (int column = 0; column < 3; ++column) {
    Choose(0, column);
    Key(VK_F2);
    desktop.Type(_T("5"));
    Run();
    EXPECT_EQ(Editor(), nullptr) << column;
  }
  Choose(0, 3);
  grid->SetReadOnly();
  Key(VK_F2);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(GridEditing, ChoosingAnotherCellSaves) {
  Fill(2, 2);
  Choose(0, 0);
  desktop.Type(_T("5"));
  Run();
  ClickOn(1, 1);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(At(0, 0)->GetValue(), _variant_t(5));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 1));
}

TEST_F(GridEditing, FocusThatGoesToAnotherWindowSaves) {
  Fill(2, 2);
  CEdit other;
  other.Create(WS_CHILD | WS_VISIBLE, CRect(0, 300, 50, 320), &top, 9);
  Choose(0, 0);
  desktop.Type(_T("5"));
  Run();
  other.SetFocus();
  Run();
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(At(0, 0)->GetValue(), _variant_t(5));
  EXPECT_EQ(CWnd::GetFocus(), &other);
}

TEST_F(GridEditing, AnotherProgramLeavesTheEditorOpen) {
  Fill(2, 2);
  Choose(0, 0);
  desktop.Type(_T("5"));
  Run();
  desktop.LeaveProgram();
  Run();
  EXPECT_NE(Editor(), nullptr);
}

TEST_F(GridEditing, DoubleClickOpens) {
  Fill(2, 2);
  desktop.DoubleClick(Centre(1, 0));
  Run();
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("10"));
}

TEST_F(GridEditing, ListComesWithTheEditor) {
  Fill(2, 2);
  At(0, 0)->SetValue(_variant_t(_T("C25")));
  for (LPCTSTR option : {_T("C20"), _T("C25"), _T("C30")}) At(0, 0)->AddOption(option);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  CComboBox* combo = grid->GetRow(0)->GetComboWnd();
  ASSERT_NE(combo, nullptr);
  EXPECT_EQ(combo->GetCount(), 3);
  EXPECT_EQ(combo->GetCurSel(), 1);
  EXPECT_EQ(grid->GetRow(1)->GetComboWnd(), nullptr);
  Key(VK_F4);
  EXPECT_TRUE(combo->GetDroppedState());
  Key(VK_DOWN);
  Key(VK_RETURN);
  EXPECT_EQ(TextOf(*Editor()), _T("C30"));
  EXPECT_EQ(At(0, 0)->FormatItem(), _T("C25"));
  Key(VK_RETURN);
  EXPECT_EQ(At(0, 0)->FormatItem(), _T("C30"));
}

TEST_F(GridEditing, HandlersOfAChangeMayDoAnything) {
  const std::function<void()> deeds[] = {
      [this] { grid->RemoveAll(); },       [this] { grid->DeleteColumn(0); },
      [this] { grid->DestroyWindow(); },   [this] { grid.reset(); },
      [this] { grid->EndEditItem(TRUE); }, [this] { grid->GetRow(0)->RemoveAllItems(); }};
  for (const auto& deed : deeds) {
    grid = std::make_unique<lorv_test::NotingGrid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    Fill(2, 2);
    Choose(0, 0);
    desktop.Type(_T("5"));
    Run();
    grid->on = [&](const std::string& what) {
      if (what.rfind("changed", 0) == 0) deed();
    };
    Key(VK_RETURN);
    Run();
    if (grid != nullptr) {
      EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
    }
  }
}

namespace {

// Opens its editor again when that one closes, as often as it may.
class ReopeningGrid : public CBCGPGridCtrl {
 public:
  int times = 0;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    const LRESULT result = CBCGPGridCtrl::WindowProc(message, w, l);
    if (message != WM_SETFOCUS || times <= 0) return result;
    --times;
    EditItem(GetRow(0));
    return result;
  }
};

}  // namespace

TEST_F(GridEditing, ColumnGoesWithoutTheEditorsThatHandlersOpen) {
  for (const int times : {1, 3, 1000}) {
    ReopeningGrid wild;
    wild.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 8);
    for (int column = 0; column < 2; ++column) wild.InsertColumn(column, _T("c"), 80);
    wild.AddRow(TRUE);
    wild.SetCurSel(CBCGPGridItemID(0, 1));
    ASSERT_NE(wild.EditItem(wild.GetRow(0)), FALSE);
    wild.times = times;
    const bool goes = times < lorv::kMostEditorCloses;
    EXPECT_EQ(wild.DeleteColumn(1) != FALSE, goes) << times;
    EXPECT_EQ(wild.GetColumnCount(), goes ? 1 : 2) << "an edit that cannot be ended keeps its column";
    EXPECT_EQ(wild.GetEditingItem() == nullptr, goes);
    wild.times = 0;
  }
}

TEST_F(GridEditing, GridThatEndsTakesItsEditorAlong) {
  Fill(2, 2);
  Choose(0, 0);
  Key(VK_F2);
  EXPECT_NE(Editor(), nullptr);
  grid.reset();
  Run();
  EXPECT_EQ(grid, nullptr);
}
