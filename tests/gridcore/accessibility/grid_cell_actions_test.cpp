#include "gridcore/items/check_item.h"
#include "tests/gridcore/accessibility/reading_desk.h"

namespace lorv_test {
namespace {

using lorv::AccessAction;

class GridCellActions : public ReadingDesk {};

TEST_F(GridCellActions, EditOpensTheEditorAndGivesItTheKeys) {
  Fill(50, 2);
  EXPECT_EQ(Cell(40, 1)->Actions().front(), AccessAction::Edit);
  EXPECT_TRUE(Cell(40, 1)->Do(AccessAction::Edit));
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), CString(_T("401")));
  EXPECT_EQ(desktop.Focus(), Editor()->m_hWnd);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(40, 1));
  EXPECT_FALSE(Has(40, 1, lorv::kAccessOffscreen)) << "scrolled to";
}

TEST_F(GridCellActions, TheEditorIsATextWithTheNameOfItsCell) {
  Fill(3, 2);
  grid->SetColumnName(1, _T("长度"));
  Cell(1, 1)->Do(AccessAction::Edit);
  const auto editor = lorv::AccessibleOf(Editor()->m_hWnd);
  EXPECT_EQ(editor->Role(), lorv::AccessRole::Text);
  EXPECT_EQ(editor->Name(), CString(_T("2 长度")));
  EXPECT_EQ(editor->Value(), CString(_T("11")));
  EXPECT_EQ(editor->Parent()->Window(), grid->m_hWnd);
  EXPECT_TRUE(editor->SetValue(_T("36")));
  Key(VK_RETURN);
  EXPECT_EQ(Value(1, 1), "36");
  EXPECT_FALSE(editor->Exists());
}

TEST_F(GridCellActions, AReadOnlyCellOffersNoEditor) {
  Fill(3, 2);
  At(1, 1)->SetReadOnly();
  EXPECT_EQ(Cell(1, 1)->Actions(), std::vector<AccessAction>{AccessAction::Focus});
  EXPECT_FALSE(Cell(1, 1)->Do(AccessAction::Edit));
  EXPECT_FALSE(Cell(1, 1)->SetValue(_T("7")));
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(Value(1, 1), "11");
  EXPECT_TRUE(Cell(1, 1)->Do(AccessAction::Focus));
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(1, 1));
}

TEST_F(GridCellActions, ATextIsSetAsIfItWereTyped) {
  Fill(3, 2);
  EXPECT_TRUE(Cell(1, 1)->SetValue(_T("42")));
  EXPECT_EQ(grid->Taken().back(), "ended");
  EXPECT_EQ(At(1, 1)->GetValue().vt, VT_I4) << "a number stays one";
  EXPECT_NE(At(1, 1)->IsItemChanged(), FALSE);
  EXPECT_EQ(Value(1, 1), "42");
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(GridCellActions, ATextThatTheCellRefusesChangesNothing) {
  class Refusing : public CBCGPGridItem {
   public:
    Refusing() : CBCGPGridItem(_variant_t(5)) {}
    BOOL OnUpdateValue() override { return FALSE; }
  };
  Fill(3, 2);
  grid->GetRow(1)->ReplaceItem(1, new Refusing);
  EXPECT_FALSE(Cell(1, 1)->SetValue(_T("42")));
  EXPECT_EQ(Editor(), nullptr) << "nothing stays behind that the user does not see";
  EXPECT_EQ(Value(1, 1), "5");
}

TEST_F(GridCellActions, ToggleTurnsACheckOver) {
  Fill(3, 2);
  grid->GetRow(1)->ReplaceItem(0, new CBCGPGridCheckItem(false));
  EXPECT_EQ(Cell(1, 0)->Actions().front(), AccessAction::Toggle);
  EXPECT_FALSE(Offers(1, 0, AccessAction::Edit));
  EXPECT_TRUE(Cell(1, 0)->Do(AccessAction::Toggle));
  EXPECT_TRUE(Has(1, 0, lorv::kAccessChecked));
  Cell(1, 0)->Do(AccessAction::Toggle);
  EXPECT_FALSE(Has(1, 0, lorv::kAccessChecked));
  At(1, 0)->SetReadOnly();
  EXPECT_FALSE(Cell(1, 0)->Do(AccessAction::Toggle));
  EXPECT_FALSE(Has(1, 0, lorv::kAccessChecked));
}

class ButtonCell : public CBCGPGridItem {
 public:
  explicit ButtonCell(int& presses) : presses_(presses) { SetFlag(lorv::kItemHasButton); }
  void OnClickButton(CPoint /*point*/) override { ++presses_; }

 private:
  int& presses_;
};

TEST_F(GridCellActions, PressPressesTheButtonOfTheCell) {
  int presses = 0;
  Fill(50, 2);
  grid->GetRow(40)->ReplaceItem(0, new ButtonCell(presses));
  EXPECT_TRUE(Offers(40, 0, AccessAction::Press));
  EXPECT_FALSE(Offers(40, 1, AccessAction::Press));
  EXPECT_TRUE(Cell(40, 0)->Do(AccessAction::Press));
  EXPECT_EQ(presses, 1);
}

TEST_F(GridCellActions, ShowListOpensTheListOfTheCell) {
  Fill(3, 2);
  At(1, 1)->AddOption(_T("C20"));
  At(1, 1)->AddOption(_T("C30"));
  EXPECT_TRUE(Cell(1, 1)->Do(AccessAction::ShowList));
  CComboBox* const combo = grid->GetRow(1)->GetComboWnd();
  ASSERT_NE(combo, nullptr);
  EXPECT_NE(combo->GetDroppedState(), FALSE);
  EXPECT_FALSE(Offers(0, 1, AccessAction::ShowList));
}

TEST_F(GridCellActions, AHeaderIsClicked) {
  Fill(3, 2);
  EXPECT_TRUE(Cell(-1, 1)->Do(AccessAction::Press));
  EXPECT_EQ(grid->Taken(), Notes{"header 1"});
  grid->EnableRowHeader(TRUE);
  grid->AdjustLayout();
  EXPECT_TRUE(Cell(1, -1)->Do(AccessAction::Press));
  EXPECT_NE(grid->IsRowSelected(1, TRUE), FALSE);
  EXPECT_FALSE(Cell(-1, -1)->Do(AccessAction::Press)) << "the corner";
}

TEST_F(GridCellActions, ARowThatHoldsOthersExpandsByItsHeader) {
  Fill(2, 2);
  auto* const below = grid->CreateRow(2);
  grid->GetRow(0)->AddSubItem(below);
  EXPECT_TRUE(Has(0, 0, lorv::kAccessExpandable | lorv::kAccessExpanded));
  EXPECT_TRUE(Has(0, -1, lorv::kAccessExpanded));
  EXPECT_FALSE(Has(0, 1, lorv::kAccessExpandable));
  EXPECT_TRUE(Cell(0, -1)->Do(AccessAction::Press));
  EXPECT_FALSE(Has(0, 0, lorv::kAccessExpanded));
  EXPECT_TRUE(Has(1, 0, lorv::kAccessHidden));
}

TEST_F(GridCellActions, ACellIsSelectedAloneOrNoMore) {
  Fill(3, 3);
  EXPECT_TRUE(Cell(1, 1)->Select(true));
  EXPECT_EQ(Table()->Selected().size(), 1U);
  EXPECT_TRUE(Cell(1, 1)->Select(false));
  EXPECT_TRUE(Table()->Selected().empty());
  grid->SelectAll();
  EXPECT_FALSE(Cell(1, 1)->Select(false)) << "one of many";
  EXPECT_FALSE(Cell(-1, 1)->Select(true));
}

// The test may end it whenever it says something: it does nothing more then.
class TalkingGrid : public NotingGrid {
 protected:
  void OnEndInplaceEdit(CBCGPGridItem* /*item*/) override { Say("ended"); }
};

// Handlers may end the grid in the middle of whatever a reader does.
TEST_F(GridCellActions, ActionsOutliveTheGrid) {
  const std::vector<AccessAction> all = {AccessAction::Edit, AccessAction::Toggle, AccessAction::Press,
                                         AccessAction::ShowList, AccessAction::Focus};
  for (const AccessAction action : all)
    for (const char* const moment : {"choosing", "chosen", "changed", "left", "header", "ended"}) {
      int presses = 0;
      grid = std::make_unique<TalkingGrid>();
      grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
      Fill(3, 3);
      grid->GetRow(1)->ReplaceItem(0, new CBCGPGridCheckItem(false));
      grid->GetRow(1)->ReplaceItem(1, new ButtonCell(presses));
      At(1, 2)->AddOption(_T("C20"));
      Choose(0, 0);
      const auto cells = {Cell(1, 0), Cell(1, 1), Cell(1, 2), Cell(-1, 1), Cell(1, -1)};
      grid->on = [this, moment](const std::string& what) {
        if (what.rfind(moment, 0) == 0) grid.reset();
      };
      for (const auto& cell : cells) cell->Do(action);
      for (const auto& cell : cells) cell->SetValue(_T("7"));
      for (const auto& cell : cells) cell->Select(true);
      for (const auto& cell : cells) EXPECT_EQ(cell->Exists(), grid != nullptr);
      grid.reset();
      Run();
    }
}

}  // namespace
}  // namespace lorv_test
