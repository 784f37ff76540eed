#include "grid/items/presentation_item.h"

#include <gtest/gtest.h>

#include "grid/items/multi_line_edit.h"
#include "tests/grid/basic/basic_desk.h"

namespace {

using PresentationItem = lorv_test::BasicDesk;
using ButtonItem = lorv_test::BasicDesk;
using ColorItemEx = lorv_test::BasicDesk;
using CheckItemEx = lorv_test::BasicDesk;
using MultiLineRow = lorv_test::BasicDesk;
using lorv_test::Notes;

}  // namespace

TEST_F(PresentationItem, StylesAreFlags) {
  CBCGPGridPresentationItem item(_variant_t(_T("C30")));
  const std::pair<int, unsigned> styles[] = {{1, 1}, {2, 2}, {4, 4}, {0, 0}};
  for (const auto& [style, flags] : styles) {
    item.SetPresentationStyle(style);
    EXPECT_EQ(item.GetFlags(), flags);
  }
  item.SetPresentationStyle(2);
  for (const int bad : {3, 5, -1, 8, 1024}) {
    item.SetPresentationStyle(bad);
    EXPECT_EQ(item.GetFlags(), 2U) << bad;
  }
}

TEST_F(PresentationItem, LinesOutliveTheStyle) {
  CBCGPGridPresentationItem item{_variant_t()};
  item.SetMultiLineItem(1);
  item.SetPresentationStyle(2);
  EXPECT_TRUE(item.IsMultiline());
  item.SetMultiLineItem(0);
  item.SetPresentationStyle(2);
  EXPECT_FALSE(item.IsMultiline());
}

TEST_F(PresentationItem, ButtonIsThreePixelsWider) {
  Fill(1, 2);
  auto* item = new CBCGPGridPresentationItem(_variant_t());
  grid->ReplaceItem(0, 0, item, FALSE);
  EXPECT_TRUE(item->GetButtonRect().IsRectEmpty());
  item->SetPresentationStyle(lorv::kButtonCell);
  EXPECT_EQ(item->GetButtonRect().Width(), lorv::kItemButtonWidth + 3);
}

TEST_F(PresentationItem, BoldEditorIsBold) {
  Fill(1, 2);
  auto* item = new CBCGPGridPresentationItem(_variant_t(_T("x")));
  grid->ReplaceItem(0, 0, item, FALSE);
  item->SetBold(1);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  LOGFONT face = {};
  Editor()->GetFont()->GetLogFont(&face);
  EXPECT_EQ(face.lfWeight, FW_BOLD);
}

TEST_F(PresentationItem, SeveralLinesHaveTheirOwnEditor) {
  Fill(1, 2);
  grid->SetMultiLineItem(0, 0, 3);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_TRUE(Editor()->IsKindOf(RUNTIME_CLASS(CMutilineEdit)));
  EXPECT_NE(Editor()->GetStyle() & ES_MULTILINE, 0U);
}

TEST_F(PresentationItem, WheelOverTheEditorScrollsTheGrid) {
  Fill(100, 1);
  grid->SetMultiLineItem(0, 0, 2);
  grid->AdjustLayout();
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  Editor()->SendMessage(WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(0, static_cast<WORD>(-120))), 0);
  EXPECT_GT(grid->GetVertScrollOffset(), 0);
}

TEST_F(ButtonItem, ClickRunsTheHookAndChangesCount) {
  Fill(2, 2);
  grid->SetButton(0, 0, true);
  const CPoint at = grid->GetItem(0, 0)->GetButtonRect().CenterPoint();
  desktop.Click(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
  Run();
  EXPECT_EQ(grid->Taken(), (Notes{"button"}));
  grid->on = [this](const std::string& what) {
    if (what == "button") grid->SetValue(0, 0, _variant_t(_T("new")));
  };
  desktop.Click(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
  Run();
  EXPECT_EQ(grid->Taken(), (Notes{"button", "changed 0,0 new"}));
}

TEST_F(ButtonItem, DisabledButtonDoesNothing) {
  Fill(1, 1);
  auto* item = new CBCGPGridButtonItem(_variant_t(), 2);
  grid->ReplaceItem(0, 0, item, FALSE);
  item->EnableButton(false);
  item->OnClickButton(CPoint(1, 1));
  EXPECT_EQ(grid->Taken(), Notes{});
  item->EnableButton(true);
  item->OnClickButton(CPoint(1, 1));
  EXPECT_EQ(grid->Taken(), (Notes{"button"}));
}

TEST_F(ButtonItem, HookMayRebuildTheTable) {
  const std::function<void()> deeds[] = {
      [this] { grid->RemoveAll(); }, [this] { grid.reset(); }, [this] { grid->SetButton(0, 0, true); },
      [this] { grid->ReplaceItem(0, 0, new CBCGPGridItem(_variant_t(1)), FALSE); }};
  for (const auto& deed : deeds) {
    grid = std::make_unique<lorv_test::BasicGrid>();
    Make();
    Fill(2, 2);
    grid->SetButton(0, 0, true);
    grid->on = [&](const std::string& what) {
      if (what == "button") deed();
    };
    const CPoint at = grid->GetItem(0, 0)->GetButtonRect().CenterPoint();
    desktop.Click(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
    Run();
    EXPECT_TRUE(grid == nullptr || grid->GetColumnCount() == 2);
  }
}

TEST_F(ButtonItem, ListOpensAsTheMenuWhenItIsLong) {
  Fill(1, 1);
  auto* item = new CBCGPGridPresentationItem(_variant_t());
  grid->ReplaceItem(0, 0, item, FALSE);
  for (int i = 0; i < 32; ++i) item->AddOption(_T("option"));
  desktop.AnswerMenu(57665 + 31);
  const CPoint at = item->GetButtonRect().CenterPoint();
  desktop.Click(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
  Run();
  EXPECT_EQ(desktop.ShownMenus().size(), 1U);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("option"));
}

TEST_F(ButtonItem, NamesOfButtons) {
  CBCGPGridButtonItem item(_variant_t(_T("增")), 2);
  EXPECT_FALSE(item.IsButtonItem());
  item.SetButtonItem(true);
  EXPECT_TRUE(item.IsButtonItem());
  EXPECT_EQ(item.GetFlags(), 0U);
  EXPECT_EQ(item.GetBtnNames().GetSize(), 1);
  EXPECT_EQ(item.GetBtnNames().GetAt(0), _T("增"));
  item.AppendButton(_T("删"));
  EXPECT_EQ(item.GetBtnNames().GetSize(), 2);
  item.SetButtonItem(false);
  EXPECT_EQ(item.GetFlags(), 2U);
  CBCGPGridButtonItem fresh(_variant_t(_T("x")), 2);
  fresh.AppendButton(_T("删"));
  EXPECT_EQ(fresh.GetBtnNames().GetSize(), 1);
  CBCGPGridButtonItem empty(_variant_t(), 2);
  empty.SetButtonItem(true);
  EXPECT_EQ(empty.GetBtnNames().GetAt(0), _T(""));
}

TEST_F(ButtonItem, ThreeNamesInAHundredPixels) {
  const std::vector<CRect> places = lorv::ButtonPlaces(CRect(0, 0, 100, 18), 3);
  ASSERT_EQ(places.size(), 3U);
  EXPECT_EQ(places[0], CRect(1, 0, 33, 18));
  EXPECT_EQ(places[1], CRect(34, 0, 66, 18));
  EXPECT_EQ(places[2], CRect(67, 0, 99, 18));
  EXPECT_TRUE(lorv::ButtonPlaces(CRect(0, 0, 100, 18), 0).empty());
  EXPECT_TRUE(lorv::ButtonPlaces(CRect(0, 0, 100, 18), -1).empty());
}

TEST_F(ButtonItem, CellOfButtonsRunsTheHookAndHasNoEditor) {
  Fill(1, 2);
  auto* item = new CBCGPGridButtonItem(_variant_t(), 2);
  grid->ReplaceItem(0, 0, item, FALSE);
  item->AppendButton(_T("a"));
  desktop.Click(Centre(0, 0));
  Run();
  EXPECT_EQ(grid->Taken(), (Notes{"button"}));
  EXPECT_FALSE(item->OnSetCursor());
  Key(VK_F2);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(ColorItemEx, SixCharactersAreRedGreenBlue) {
  Fill(1, 2);
  auto* item = new CBCGPGridColorItemEx(RGB(0, 0, 255), nullptr);
  grid->ReplaceItem(0, 0, item, FALSE);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), _T("0000FF"));
  Editor()->SetSel(0, 0);
  Type(_T("GFF0000"));
  EXPECT_EQ(TextOf(*Editor()), _T("FF0000"));
  Key(VK_RETURN);
  EXPECT_EQ(item->GetColor(), RGB(255, 0, 0));
  EXPECT_EQ(grid->Taken(), (Notes{"changed 0,0 FF0000"}));
}

TEST_F(ColorItemEx, SameColourIsNoChange) {
  Fill(1, 2);
  grid->ReplaceItem(0, 0, new CBCGPGridColorItemEx(lorv::kNoColour, nullptr), FALSE);
  Choose(0, 0);
  Key(VK_F2);
  Key(VK_RETURN);
  EXPECT_EQ(grid->Taken(), Notes{});
}

TEST_F(CheckItemEx, ThirdStateNeedsATrueValue) {
  CBCGPGridCheckItemEx box(true);
  EXPECT_EQ(box.DrawnState(), 1);
  box.EnableNotAllSelIcon(true);
  EXPECT_EQ(box.DrawnState(), 2);
  box.SetValue(_variant_t(false));
  EXPECT_EQ(box.DrawnState(), 0);
  box.SetValue(_variant_t());
  EXPECT_EQ(box.DrawnState(), 0);
  box.SetValue(_variant_t(_T("梁")));
  EXPECT_THROW(box.DrawnState(), _com_error);
}

TEST_F(CheckItemEx, BoxStandsInTheMiddleWithoutALabel) {
  EXPECT_EQ(lorv::CheckBoxPlace(CRect(0, 0, 100, 20), 17, false), CRect(41, 2, 58, 18));
  EXPECT_EQ(lorv::CheckBoxPlace(CRect(0, 0, 100, 20), 17, true), CRect(0, 2, 17, 18));
  EXPECT_EQ(lorv::CheckBoxPlace(CRect(0, 0, 100, 50), 17, true), CRect(0, 17, 17, 33));
}

TEST_F(MultiLineRow, CountsItsLinesBetweenItsBounds) {
  grid->InsertColumns(_T("a,b"), _T("100,100"), 0);
  grid->AddMultiLineRow(3, 1);
  grid->AdjustLayout();
  auto* row = dynamic_cast<CBCGPGridMultiLineRow*>(grid->GetRow(0));
  ASSERT_NE(row, nullptr);
  // 70 narrow characters of 7 pixels are 490: five lines.
  grid->SetValue(0, 0, _variant_t(CString(_T('a'), 70)));
  row->OnItemUpdate(FALSE);
  EXPECT_EQ(row->GetLinesNumber(), 3);
  row->SetMaxLines(9);
  row->OnItemUpdate(FALSE);
  EXPECT_EQ(row->GetLinesNumber(), 5);
  row->SetMinLines(7);
  row->SetMaxLines(2);
  row->OnItemUpdate(FALSE);
  EXPECT_EQ(row->GetLinesNumber(), 7);
  row->SetMaxLines(0);
  row->SetMinLines(-1);
  EXPECT_EQ(row->GetMaxLines(), 2);
  EXPECT_EQ(row->GetMinLines(), 7);
}

TEST_F(MultiLineRow, AsksForALayoutOnlyWhenTheCountChanges) {
  grid->InsertColumns(_T("a"), _T("100"), 0);
  grid->AddMultiLineRow(5, 1);
  grid->AdjustLayout();
  auto* row = dynamic_cast<CBCGPGridMultiLineRow*>(grid->GetRow(0));
  const int height = grid->GetRowRect(0).Height();
  grid->SetValue(0, 0, _variant_t(_T("a\\nb")));
  row->OnItemUpdate(TRUE);
  Run();
  EXPECT_EQ(row->GetLinesNumber(), 2);
  EXPECT_GT(grid->GetRowRect(0).Height(), height);
  grid->SetValue(0, 0, _variant_t(_T("a\nb")));
  grid->OnResizeColumns();
  EXPECT_EQ(row->GetLinesNumber(), 1);
  EXPECT_EQ(grid->GetRowRect(0).Height(), height);
}

TEST_F(MultiLineRow, MakesCellsOfSeveralLines) {
  grid->InsertColumns(_T("a,b,c"), _T(""), 0);
  grid->SetColumnButton(1, true);
  grid->SetItemRTC(2, RUNTIME_CLASS(CBCGPGridReadOnlyItem));
  grid->AddMultiLineRow(2, 1);
  auto* plain = dynamic_cast<CBCGPGridPresentationItem*>(grid->GetItem(0, 0));
  auto* button = dynamic_cast<CBCGPGridPresentationItem*>(grid->GetItem(0, 1));
  ASSERT_NE(plain, nullptr);
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(plain->GetFlags(), 0U);
  EXPECT_EQ(plain->IsMultiLineItem(), 1);
  EXPECT_EQ(button->GetFlags(), 2U);
  EXPECT_FALSE(button->IsKindOf(RUNTIME_CLASS(CBCGPGridButtonItem)));
  EXPECT_TRUE(grid->GetItem(0, 2)->IsKindOf(RUNTIME_CLASS(CBCGPGridReadOnlyItem)));
  CBCGPGridMultiLineRow alone;
  alone.OnItemUpdate(TRUE);
  EXPECT_EQ(alone.GetLinesNumber(), 1);
}

TEST_F(MultiLineRow, TypingGrowsTheRow) {
  grid->InsertColumns(_T("a"), _T("100"), 0);
  grid->AddMultiLineRow(9, 1);
  grid->AdjustLayout();
  grid->SetFocus();
  Choose(0, 0);
  Type(_T("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"));
  EXPECT_GT(grid->GetRow(0)->GetLinesNumber(), 1);
}
