#include <gtest/gtest.h>

#include "tests/grid/basic/basic_desk.h"

namespace {

using BasicEditing = lorv_test::BasicDesk;
using lorv_test::Notes;
using Cell = CBCGPGridItemID;

constexpr int kKeyF2 = VK_F2;

}  // namespace

TEST_F(BasicEditing, DefaultsAreTheSuites) {
  EXPECT_EQ(grid->GetReturnStyle(), emReturnDown);
  EXPECT_FALSE(grid->GetReturnAddNewRow());
  grid->SetReturnToLeft(emReturnRight);
  EXPECT_EQ(grid->GetReturnStyle(), emReturnRight);
  grid->SetReturnAddNewRow(true);
  EXPECT_TRUE(grid->GetReturnAddNewRow());
}

TEST_F(BasicEditing, ReturnAndTabMoveByTheirStyles) {
  Fill(4, 4);
  Choose(0, 0);
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 0));
  Key(VK_TAB);
  EXPECT_EQ(Current(), Cell(1, 1));
  grid->SetReturnToLeft(emReturnRight);
  grid->SetTabToLeft(emReturnDown);
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 2));
  Key(VK_TAB);
  EXPECT_EQ(Current(), Cell(2, 2));
}

TEST_F(BasicEditing, ReturnOnTheLastRowOnlyChangesTheKey) {
  Fill(2, 2);
  grid->SetReturnAddNewRow(true);
  grid->SetReturnToLeft(emReturnRight);
  Choose(1, 0);
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 0));
  EXPECT_EQ(grid->GetRowCount(), 2);
  grid->SetReadOnly();
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 1));
}

TEST_F(BasicEditing, EditorThatEndsDownwardsAddsARow) {
  Fill(2, 2);
  grid->SetReturnAddNewRow(true);
  grid->SetReturnToLeft(emReturnRight);
  Choose(1, 0);
  Type(_T("x"));
  Key(VK_RETURN);
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(Current(), Cell(2, 0));
  EXPECT_EQ(Text(1, 0), _T("x"));
  EXPECT_NE(Editor(), nullptr);
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetRowCount(), 4);
  EXPECT_EQ(Current(), Cell(3, 0));
}

TEST_F(BasicEditing, MoveIsPostedSoTheOldCellIsCurrentInBetween) {
  Fill(3, 2);
  Choose(0, 0);
  Type(_T("x"));
  grid->EndEditItem(TRUE);
  EXPECT_EQ(Current(), Cell(0, 0));
  EXPECT_EQ(Editor(), nullptr);
  Run();
  EXPECT_EQ(Current(), Cell(0, 0));
  grid->SendMessage(lorv::kMessageNavigate, 2, 0);
  EXPECT_EQ(Current(), Cell(1, 0));
  EXPECT_NE(Editor(), nullptr);
}

TEST_F(BasicEditing, UserWalksThroughCellsWithTheEditorOpen) {
  Fill(3, 3);
  Choose(0, 0);
  Key(kKeyF2);
  ASSERT_NE(Editor(), nullptr);
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 0));
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("10"));
  Editor()->SetSel(2, 2);
  Key(VK_TAB);
  EXPECT_EQ(Current(), Cell(1, 1));
  EXPECT_NE(Editor(), nullptr);
  EXPECT_EQ(grid->Taken(), Notes{});
}

TEST_F(BasicEditing, ReturnStyleZeroStillGoesDownFromAnEditor) {
  Fill(3, 2);
  grid->SetReturnToLeft(emReturnAsIs);
  Choose(0, 0);
  Type(_T("x"));
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 0));
}

TEST_F(BasicEditing, LockedCellOnTheWayEndsTheWalk) {
  Fill(3, 2);
  grid->SetItemReadOnly(1, 0, true);
  grid->GetItem(1, 0)->SetReadOnly();
  Choose(0, 0);
  Type(_T("x"));
  Key(VK_RETURN);
  EXPECT_EQ(Current(), Cell(1, 0));
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(BasicEditing, MoveIsDroppedWhenTheFocusIsElsewhere) {
  Fill(3, 2);
  Choose(0, 0);
  CEdit other;
  other.Create(WS_CHILD | WS_VISIBLE, CRect(0, 300, 50, 320), &top, 9);
  other.SetFocus();
  grid->SendMessage(lorv::kMessageNavigate, 2, 0);
  EXPECT_EQ(Current(), Cell(0, 0));
}

TEST_F(BasicEditing, RightLeavesFromBeforeTheLastCharacter) {
  Fill(2, 3);
  grid->SetValue(0, 1, _variant_t(_T("abc")));
  Choose(0, 1);
  Key(kKeyF2);
  Editor()->SetSel(1, 1);
  Key(VK_RIGHT);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Editor()->GetSel() & 0xFFFFU, 2U);
  EXPECT_EQ(Current(), Cell(0, 1));
  Key(VK_RIGHT);
  EXPECT_EQ(Current(), Cell(0, 2));
}

TEST_F(BasicEditing, LeftCollapsesAndThenLeavesFromTheStartOnly) {
  Fill(2, 3);
  grid->SetValue(0, 1, _variant_t(_T("abc")));
  Choose(0, 1);
  Key(kKeyF2);
  Key(VK_LEFT);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Editor()->GetSel(), 0U);
  EXPECT_EQ(Current(), Cell(0, 1));
  KeyWith(VK_SHIFT, VK_LEFT);
  EXPECT_EQ(Current(), Cell(0, 1));
  Key(VK_LEFT);
  EXPECT_EQ(Current(), Cell(0, 0));
}

TEST_F(BasicEditing, TabAndArrowsMayEndAnEdit) {
  for (const UINT key : {9U, 37U, 38U, 39U, 40U})
    EXPECT_TRUE(grid->CanEndInplaceEditOnChar(key, 1, 0)) << key;
  for (const UINT key : {65U, 46U, 36U, 35U}) EXPECT_FALSE(grid->CanEndInplaceEditOnChar(key, 1, 0)) << key;
}

TEST_F(BasicEditing, CtrlDCopiesFromAbove) {
  Fill(3, 3);
  grid->SetShortCut(true);
  CUIntArray left_out;
  left_out.Add(1);
  grid->SetNotShortCutCol(left_out);
  Choose(0, 1);
  KeyWith(VK_CONTROL, 'D');
  EXPECT_EQ(Text(0, 1), _T("1"));
  Choose(2, 1);
  KeyWith(VK_CONTROL, 'D');
  EXPECT_EQ(Text(2, 1), _T("11"));
  EXPECT_EQ(Text(2, 0), _T("20"));
}

TEST_F(BasicEditing, CtrlBCopiesTheRowButForItsList) {
  Fill(3, 4);
  grid->SetShortCut(true);
  CUIntArray left_out;
  left_out.Add(1);
  grid->SetNotShortCutCol(left_out);
  grid->GetItem(2, 2)->SetReadOnly();
  grid->GetItem(2, 3)->AllowEdit(FALSE);
  Choose(2, 1);
  KeyWith(VK_CONTROL, 'B');
  EXPECT_EQ(Text(2, 0), _T("10"));
  EXPECT_EQ(Text(2, 1), _T("21"));
  EXPECT_EQ(Text(2, 2), _T("22"));
  EXPECT_EQ(Text(2, 3), _T("23"));
}

TEST_F(BasicEditing, ShortcutsNeedTheirSwitchAndATableToChange) {
  Fill(3, 2);
  Choose(2, 0);
  KeyWith(VK_CONTROL, 'D');
  EXPECT_EQ(Text(2, 0), _T("20"));
  grid->SetShortCut(true);
  grid->SetReadOnly();
  KeyWith(VK_CONTROL, 'D');
  EXPECT_EQ(Text(2, 0), _T("20"));
}

TEST_F(BasicEditing, CtrlDInAnOpenEditorDropsWhatWasTyped) {
  Fill(3, 2);
  grid->SetShortCut(true);
  Choose(1, 0);
  Type(_T("typed"));
  KeyWith(VK_CONTROL, 'D');
  EXPECT_EQ(Text(1, 0), _T("0"));
}

TEST_F(BasicEditing, EachCellBringsItsLanguageBack) {
  Fill(3, 2);
  const auto chinese = reinterpret_cast<HKL>(static_cast<std::uintptr_t>(0x0804));
  const auto english = reinterpret_cast<HKL>(static_cast<std::uintptr_t>(0x0409));
  desktop.SetLayouts({english, chinese});
  Choose(0, 0);
  Key(kKeyF2);
  desktop.ActivateLayout(chinese, 0);
  Key(VK_ESCAPE);
  desktop.ActivateLayout(english, 0);
  Choose(1, 1);
  Key(kKeyF2);
  EXPECT_EQ(desktop.Layout(), english);
  Key(VK_ESCAPE);
  // By number: whichever row stands there now.
  grid->DeleteRows(0, 1);
  Choose(0, 0);
  Key(kKeyF2);
  EXPECT_EQ(desktop.Layout(), chinese);
}

TEST_F(BasicEditing, OpensTheEditorOfACellByNumber) {
  Fill(3, 2);
  grid->SetCurEditingItem(2, 1);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("21"));
  grid->SetCurEditingItem(9, 9);
  EXPECT_EQ(Current(), Cell(2, 1));
}

TEST_F(BasicEditing, LongListIsAMenuAndAShortOneIsNot) {
  Fill(2, 1);
  CBCGPGridItem* item = grid->GetItem(0, 0);
  const CPoint point = grid->GetItemRect({0, 0}).CenterPoint();
  for (int i = 0; i < 31; ++i) item->AddOption(_T("o"));
  EXPECT_FALSE(grid->ShowItemStringList(point));
  item->AddOption(_T("last"));
  EXPECT_TRUE(grid->ShowItemStringList(point));
  EXPECT_FALSE(grid->ShowItemStringList(CPoint(-5, -5)));
  ASSERT_EQ(desktop.ShownMenus().size(), 1U);
}

TEST_F(BasicEditing, ListOfTwoIsAMenuWhereAskedFor) {
  Fill(2, 1);
  grid->SetDropdownShowOffset(true);
  grid->GetItem(0, 0)->AddOption(_T("a"));
  grid->GetItem(0, 0)->AddOption(_T("b"));
  EXPECT_TRUE(grid->ShowItemStringList(grid->GetItemRect({0, 0}).CenterPoint()));
  EXPECT_EQ(desktop.ShownMenus().size(), 1U);
}

TEST_F(BasicEditing, MenusChoiceStandsInTheOpenEditor) {
  Fill(2, 1);
  grid->SetDropdownShowOffset(true);
  CBCGPGridItem* item = grid->GetItem(0, 0);
  item->AddOption(_T("a"));
  item->AddOption(_T("b"));
  desktop.AnswerMenu(57666);
  EXPECT_TRUE(grid->ShowItemStringList(grid->GetItemRect({0, 0}).CenterPoint()));
  EXPECT_EQ(grid->Taken(), Notes{});
  Choose(0, 0);
  Key(kKeyF2);
  desktop.AnswerMenu(57666);
  EXPECT_TRUE(grid->ShowItemStringList(grid->GetItemRect({0, 0}).CenterPoint()));
  EXPECT_EQ(grid->Taken(), (Notes{"combo"}));
  EXPECT_EQ(TextOf(*Editor()), _T("b"));
  EXPECT_EQ(Text(0, 0), _T("0"));
}

TEST_F(BasicEditing, HandlersOfAChangeMayDoAnything) {
  const std::function<void()> deeds[] = {[this] { grid->RemoveAll(); },
                                         [this] { grid->DeleteRows(0, 2); },
                                         [this] { grid->DestroyWindow(); },
                                         [this] { grid.reset(); },
                                         [this] { grid->SetValue(0, 0, _variant_t(5)); },
                                         [this] { grid->AppendRows(3); }};
  for (const auto& deed : deeds) {
    grid = std::make_unique<lorv_test::BasicGrid>();
    Make();
    Fill(2, 2);
    grid->SetReturnAddNewRow(true);
    Choose(1, 0);
    Type(_T("x"));
    grid->on = [&](const std::string& what) {
      if (what.rfind("changed", 0) == 0) deed();
    };
    Key(VK_RETURN);
    if (grid != nullptr) {
      grid->AdjustLayout();
    }
  }
}
