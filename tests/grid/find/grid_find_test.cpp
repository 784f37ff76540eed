#include "grid/find/grid_find.h"

#include <set>

#include "grid/commands/grid_commands.h"
#include "tests/grid/basic/basic_desk.h"
#include "tests/grid/bridge/bridge_desk.h"

namespace {

using lorv::FindOptions;
using lorv::ReplaceCount;

std::string Of(const CBCGPGridItemID& id) {
  return id.IsNull() ? "none" : std::to_string(id.m_nRow) + "," + std::to_string(id.m_nColumn);
}

FindOptions For(LPCTSTR text) {
  FindOptions options;
  options.text = text;
  return options;
}

class GridFind : public lorv_test::BasicDesk {
 protected:
  // C30 stands at 0,1  1,0  2,2  3,1.
  GridFind() {
    Fill(4, 3);
    for (const auto& [row, column] : {std::pair(0, 1), {1, 0}, {2, 2}, {3, 1}}) Put(row, column, _T("C30"));
    find = std::make_unique<lorv::GridFind>(*grid);
    find->SetOptions(For(_T("c30")));
  }
  std::string Walk(bool backwards) {
    std::string seen;
    CBCGPGridItemID at;
    for (int i = 0; i < 5; ++i) {
      at = find->FindFrom(at, backwards);
      seen += Of(at) + " ";
    }
    return seen;
  }

  std::unique_ptr<lorv::GridFind> find;
};

}  // namespace

TEST_F(GridFind, WalksAsOneReads) {
  EXPECT_EQ(Walk(false), "0,1 1,0 2,2 3,1 0,1 ");
  EXPECT_EQ(Walk(true), "3,1 2,2 1,0 0,1 3,1 ");
  EXPECT_EQ(find->Count(), 4);
}

TEST_F(GridFind, WithoutWrapItEndsAtTheEnd) {
  FindOptions options = For(_T("C30"));
  options.wrap = false;
  find->SetOptions(options);
  EXPECT_EQ(Of(find->FindFrom({3, 1}, false)), "none");
  EXPECT_EQ(Of(find->FindFrom({0, 1}, true)), "none");
  EXPECT_EQ(Of(find->FindFrom({2, 2}, false)), "3,1");
}

TEST_F(GridFind, OneCellAloneIsFoundAgain) {
  find->SetOptions(For(_T("22")));
  Put(2, 2, _T("22"));
  EXPECT_EQ(Of(find->FindFrom({2, 2}, false)), "2,2");
  EXPECT_EQ(Of(find->FindFrom({2, 2}, true)), "2,2");
}

TEST_F(GridFind, WholeCellsAndCase) {
  FindOptions options = For(_T("C3"));
  options.whole_cell = true;
  find->SetOptions(options);
  EXPECT_EQ(find->Count(), 0);
  options = For(_T("c30"));
  options.match_case = true;
  find->SetOptions(options);
  EXPECT_EQ(find->Count(), 0);
  find->SetOptions(For(_T("")));
  EXPECT_EQ(find->Count(), 0);
  EXPECT_FALSE(find->FindNext());
}

TEST_F(GridFind, NextAndPreviousMakeTheCellCurrent) {
  grid->SetCurSel({1, 1});
  EXPECT_TRUE(find->FindNext());
  EXPECT_EQ(Of(Current()), "2,2");
  EXPECT_TRUE(find->FindPrevious());
  EXPECT_EQ(Of(Current()), "1,0");
  FindOptions backwards = For(_T("C30"));
  backwards.backwards = true;
  find->SetOptions(backwards);
  EXPECT_TRUE(find->FindNext());
  EXPECT_EQ(Of(Current()), "0,1");
  EXPECT_TRUE(find->FindPrevious());
  EXPECT_EQ(Of(Current()), "1,0");
}

TEST_F(GridFind, WhatIsFoundIsShown) {
  grid->AppendRows(200);
  Put(150, 0, _T("far away"));
  find->SetOptions(For(_T("FAR")));
  EXPECT_TRUE(find->FindNext());
  CRect seen;
  EXPECT_NE(seen.IntersectRect(grid->GetItemRect({150, 0}), grid->GetListRect()), FALSE);
}

TEST_F(GridFind, HiddenCellsOnlyWhereAsked) {
  grid->SetRowVisible(1, false);
  grid->SetColumnVisible(2, FALSE);
  grid->AdjustLayout();
  EXPECT_EQ(Walk(false), "0,1 3,1 0,1 3,1 0,1 ");
  FindOptions options = For(_T("C30"));
  options.hidden_cells = true;
  find->SetOptions(options);
  EXPECT_EQ(find->Count(), 4);
}

TEST_F(GridFind, OnlyInTheSelectionAsItStood) {
  FindOptions options = For(_T("C30"));
  options.selection_only = true;
  grid->SelectRange({0, 1, 1, 3});
  find->SetOptions(options);
  EXPECT_EQ(Walk(false), "1,0 3,1 1,0 3,1 1,0 ");
  EXPECT_TRUE(find->FindNext());
  EXPECT_TRUE(find->FindNext());
  EXPECT_EQ(find->Count(), 2);
  EXPECT_EQ(find->ReplaceAll(_T("x")).changed, 2);
  // One cell is no range to search.
  grid->SetCurSel({1, 1});
  find->SetOptions(options);
  EXPECT_EQ(find->Count(), 2);
}

TEST_F(GridFind, OfMergedCellsTheFirstCounts) {
  grid->MergeRange({0, 1, 1, 2});
  Put(1, 1, _T("C30"));
  EXPECT_EQ(Walk(false), "0,1 1,0 2,2 3,1 0,1 ");
}

TEST_F(GridFind, ReplacesAllAndCounts) {
  Put(0, 0, _T("C30-C30"));
  grid->SetItemReadOnly(1, 0, true);
  grid->SelectRange({0, 2, 1, 3});
  grid->Taken();
  const ReplaceCount count = find->ReplaceAll(_T("C35"));
  EXPECT_EQ(count.changed, 4);
  EXPECT_EQ(count.places, 5);
  EXPECT_EQ(count.kept, 1);
  EXPECT_EQ(count.refused, 0);
  EXPECT_EQ(Text(0, 0), CString(_T("C35-C35")));
  EXPECT_EQ(Text(1, 0), CString(_T("C30")));
  EXPECT_EQ(Text(3, 1), CString(_T("C35")));
  EXPECT_EQ(grid->Taken().size(), 4U);
  ASSERT_EQ(grid->GetSelection().size(), 1U);
  EXPECT_EQ(grid->GetSelection().front(), CBCGPGridRange(0, 2, 1, 3));
}

TEST_F(GridFind, AReplacementThatHoldsTheTextIsNotReplacedAgain) {
  EXPECT_EQ(find->ReplaceAll(_T("C30 C30")).changed, 4);
  EXPECT_EQ(Text(0, 1), CString(_T("C30 C30")));
}

TEST_F(GridFind, NumbersStayNumbersWhereTheTextIsOne) {
  grid->GetItem(0, 0)->SetValue(_variant_t(12.5));
  find->SetOptions(For(_T("12.5")));
  EXPECT_EQ(find->ReplaceAll(_T("13.25")).changed, 1);
  EXPECT_EQ(grid->GetItem(0, 0)->GetValue(), _variant_t(13.25));
  find->SetOptions(For(_T("13.25")));
  EXPECT_EQ(find->ReplaceAll(_T("b*h")).changed, 1);
  EXPECT_EQ(Text(0, 0), CString(_T("b*h")));
}

TEST_F(GridFind, ReplacesTheCurrentOneAndGoesOn) {
  grid->SetCurSel({0, 0});
  EXPECT_EQ(find->ReplaceNext(_T("C40")).changed, 0);
  EXPECT_EQ(Of(Current()), "0,1");
  EXPECT_EQ(find->ReplaceNext(_T("C40")).changed, 1);
  EXPECT_EQ(Text(0, 1), CString(_T("C40")));
  EXPECT_EQ(Of(Current()), "1,0");
}

TEST_F(GridFind, AnOpenEditorIsEndedFirst) {
  grid->SetCurSel({0, 0});
  Key(VK_F2);
  Type(_T("C30"));
  EXPECT_TRUE(find->FindNext());
  EXPECT_EQ(Text(0, 0), CString(_T("C30")));
  EXPECT_EQ(Of(Current()), "0,1");
}

TEST_F(GridFind, CommandsGiveIt) {
  lorv::GridCommands commands(*grid);
  find->Bind(commands);
  grid->SetCurSel({0, 0});
  Key(VK_F3);
  EXPECT_EQ(Of(Current()), "0,1");
  KeyWith(VK_SHIFT, VK_F3);
  EXPECT_EQ(Of(Current()), "3,1");
  find->SetOptions(For(_T("")));
  EXPECT_FALSE(commands.IsEnabled(_T("find_next")));
}

TEST_F(GridFind, HandlersMayEndTheGridOrTheFinder) {
  grid->on = [this](const std::string&) { find.reset(); };
  EXPECT_EQ(find->ReplaceAll(_T("x")).changed, 0);
  EXPECT_EQ(find, nullptr);
  find = std::make_unique<lorv::GridFind>(*grid);
  find->SetOptions(For(_T("C30")));
  grid->on = [this](const std::string&) { grid.reset(); };
  EXPECT_EQ(find->ReplaceAll(_T("x")).changed, 0);
  EXPECT_EQ(find->Grid(), nullptr);
  EXPECT_FALSE(find->FindNext());
  EXPECT_EQ(find->Count(), 0);
  EXPECT_EQ(find->ReplaceNext(_T("y")).changed, 0);
  EXPECT_EQ(Of(find->FindFrom({0, 0}, false)), "none");
}

TEST_F(GridFind, HandlersMayRebuildTheTable) {
  grid->on = [this](const std::string&) { grid->CBCGPBasicGridCtrl::RemoveAll(); };
  EXPECT_EQ(find->ReplaceAll(_T("x")).changed, 1);
  EXPECT_EQ(grid->GetRowCount(), 0);
  grid->on = nullptr;
  grid->AppendRows(3);
  Put(1, 1, _T("C30"));
  // A handler that puts a row before the changed one each time comes to no end by itself.
  grid->on = [this](const std::string&) { grid->InsertRowBefore(0, grid->CreateRow(3)); };
  EXPECT_LE(find->ReplaceAll(_T("C30!")).changed, 3);
}

TEST_F(GridFind, AHostThatTakesTheValueBackIsCounted) {
  grid->on = [this](const std::string& what) {
    if (what.find("0,1") != std::string::npos) Put(0, 1, _T("C30"));
  };
  const ReplaceCount count = find->ReplaceAll(_T("x"));
  EXPECT_EQ(count.changed, 3);
  EXPECT_EQ(count.refused, 1);
}

TEST_F(GridFind, VirtualRowsAreAskedOneByOneAndKeepTheirValues) {
  int fills = 0;
  ASSERT_NE(grid->EnableVirtualMode([&](CBCGPGridRow& row, int index) {
    ++fills;
    CString text;
    text.Format(_T("r%d"), index);
    row.GetItem(0)->SetValue(_variant_t(static_cast<LPCTSTR>(text)), FALSE);
  }),
            FALSE);
  grid->SetVirtualRows(20000);
  fills = 0;
  find->SetOptions(For(_T("r19999")));
  EXPECT_EQ(Of(find->FindFrom({}, false)), "19999,0");
  EXPECT_LE(fills, 20000);
  EXPECT_EQ(find->ReplaceAll(_T("x")).kept, 1);
  EXPECT_TRUE(find->FindNext());
  EXPECT_EQ(Of(Current()), "19999,0");
}

namespace {

class GridFindInBridge : public lorv_test::BridgeDesk {};

}  // namespace

TEST_F(GridFindInBridge, ARefusedChangeGetsItsOwnValueBack) {
  Fill(2, 2);
  Put(1, 1, _T("C30"));
  grid->SetAllowUpdate(false);
  Choose(0, 0);
  lorv::GridFind find(*grid);
  find.SetOptions(For(_T("C30")));
  const ReplaceCount count = find.ReplaceAll(_T("x"));
  EXPECT_EQ(count.refused, 1);
  EXPECT_EQ(Text(1, 1), CString(_T("C30")));
  EXPECT_EQ(Of(Current()), "0,0");
}

TEST_F(GridFind, PatternsFindAndReplaceByGroups) {
  FindOptions options = For(_T("^c(\\d)0$"));
  options.pattern = true;
  find->SetOptions(options);
  EXPECT_TRUE(find->IsPatternValid());
  EXPECT_EQ(find->Count(), 4);
  EXPECT_EQ(Walk(false), "0,1 1,0 2,2 3,1 0,1 ");
  const ReplaceCount count = find->ReplaceAll(_T("HRB$10"));
  EXPECT_EQ(count.changed, 4);
  EXPECT_EQ(Text(2, 2), CString(_T("HRB30")));
  options.text = _T("(");
  find->SetOptions(options);
  EXPECT_FALSE(find->IsPatternValid());
  EXPECT_EQ(find->Count(), 0);
  EXPECT_FALSE(find->FindNext());
}
