#include "grid/history/grid_history.h"

#include "tests/grid/history/history_desk.h"

namespace {

using BasicGrid = lorv_test::HostileGrid<CBCGPBasicGridCtrl>;
using AutoGrid = lorv_test::HostileGrid<CBcgTrueDbGridCtrlEx>;
using GridHistoryOf = lorv_test::HistoryDesk<BasicGrid>;
using GridHistoryOfAutoRows = lorv_test::HistoryDesk<AutoGrid>;

// Notes each cell that is chosen or left.
class EndingGrid : public CBCGPBasicGridCtrl {
 public:
  std::function<void()> on_chosen;

 protected:
  void OnSelChanged(const CBCGPGridRange& /*range*/, BOOL /*selected*/) override {
    const auto copy = on_chosen;
    if (copy) copy();
  }
};

}  // namespace

TEST_F(GridHistoryOf, MakesOneStepOfEachChangeOfTheUser) {
  Start(6, 4);
  Enter(1, 1, _T("typed"));
  EXPECT_EQ(Text(1, 1), _T("typed"));
  ExpectOneStep("a typed value");
  grid->InsertRows(2, 3);
  ExpectOneStep("rows put in");
  grid->AppendRows(2);
  ExpectOneStep("rows added");
  grid->DeleteRows(1, 3);
  ExpectOneStep("rows deleted");
  grid->SelectRange({0, 2, 3, 4});
  grid->DeleteSelectedRows();
  ExpectOneStep("selected rows deleted");
  grid->Sort(1, FALSE);
  ExpectOneStep("a sort");
  grid->MergeRange({1, 1, 2, 3});
  ExpectOneStep("cells merged");
  grid->SetShortCut(true);
  Choose(3, 0);
  KeyWith(VK_CONTROL, 'B');
  ExpectOneStep("a row copied from above");
}

TEST_F(GridHistoryOf, TakesAFillBackAsOneStep) {
  Start(6, 3);
  grid->SetDragCopyFill(true);
  grid->SelectRange({0, 0, 1, 1});
  Run();
  const CRect border = grid->GetSelectionBorder();
  desktop.MoveMouse(On(*grid, static_cast<int>(border.right) - 1, static_cast<int>(border.bottom) - 1));
  desktop.MouseDown();
  desktop.MoveMouse(Centre(5, 1));
  desktop.MouseUp();
  Run();
  EXPECT_EQ(Text(5, 1), _T("11"));
  ExpectOneStep("a fill");
}

TEST_F(GridHistoryOf, ARowThatReturnAddedGoesWithTheValueThatCausedIt) {
  Start(2, 2);
  grid->SetReturnAddNewRow(true);
  Choose(1, 0);
  Type(_T("new"));
  Key(VK_RETURN);
  ASSERT_EQ(grid->GetRowCount(), 3);
  grid->EndEditItem(FALSE);
  ExpectOneStep("a value, and the row that it needed");
}

TEST_F(GridHistoryOf, TakesATickBack) {
  Start(2, 2);
  grid->ReplaceItem(0, 0, new CBCGPGridCheckItemEx(false), FALSE);
  first = Now();
  Choose(0, 0);
  Key(VK_SPACE);
  ExpectOneStep("a tick");
}

TEST_F(GridHistoryOf, BringsMergesColoursAndNestedRowsBackWithTheirRows) {
  Start(6, 3);
  grid->MergeRange({0, 1, 1, 3});
  grid->MergeRange({0, 4, 0, 5});
  grid->GetItem(2, 1)->SetBackgroundColor(RGB(1, 2, 3));
  grid->GetItem(2, 2)->SetReadOnly();
  CBCGPGridRow* const nested = grid->CreateRow(3);
  grid->GetRow(2)->AddSubItem(nested);
  nested->GetItem(0)->SetValue(_variant_t(1.5));
  history->Forget();
  first = Now();
  grid->DeleteRows(1, 3);
  ExpectOneStep("rows with all that they have");
  EXPECT_EQ(grid->CBCGPGridCtrl::GetRow(3), nested);
  grid->RemoveRow(3, TRUE);
  ExpectOneStep("a nested row");
}

TEST_F(GridHistoryOf, LeavesValuesOfTheProgramOutside) {
  Start(3, 2);
  grid->SetValue(0, 0, _variant_t(_T("program")));
  grid->GetItem(0, 0)->SetTextColor(5);
  EXPECT_FALSE(history->CanUndo());
  Enter(1, 1, _T("user"));
  grid->SetValue(0, 0, _variant_t(8));
  EXPECT_EQ(history->UndoCount(), 1U);
  history->Undo();
  EXPECT_EQ(Text(0, 0), _T("8"));
  EXPECT_EQ(Text(1, 1), _T("11"));
}

TEST_F(GridHistoryOf, TakesValuesOfTheProgramInWhereItIsAsked) {
  Start(3, 2);
  grid->on_changed = [&](int row, int column) {
    grid->SetValue(row, column == 0 ? 1 : 0, _variant_t(_T("derived")));
  };
  Enter(1, 0, _T("x"));
  history->Undo();
  EXPECT_EQ(Text(1, 1), _T("derived"));
  grid->SetValue(1, 1, _variant_t(_T("11")));
  history->SetProgramChanges(lorv::ProgramChanges::kInSteps);
  grid->SetValue(0, 0, _variant_t(_T("0")));
  history->Forget();
  Enter(1, 0, _T("x"));
  ExpectOneStep("with what handlers set");
  grid->on_changed = nullptr;
  history->SetProgramChanges(lorv::ProgramChanges::kAlways);
  grid->SetValue(0, 0, _variant_t(5.25));
  ExpectOneStep("each of the program's");
  history->SetProgramChanges(lorv::ProgramChanges::kOutside);
  {
    const lorv::HistoryStep step(*history);
    grid->SetValue(0, 0, _variant_t(9));
    grid->InsertRows(1, 1);
    grid->SetValue(1, 0, _variant_t(_T("new")));
    grid->GetItem(1, 1)->SetBackgroundColor(7);
    grid->DeleteRows(2, 1);
    EXPECT_FALSE(history->CanUndo());
  }
  ExpectOneStep("all between the ends of a step");
}

TEST_F(GridHistoryOf, KeepsNoStepOfWhatChangesNothing) {
  Start(2, 2);
  grid->on_changed = [&](int row, int column) { grid->SetValue(row, column, _variant_t(_T("0"))); };
  Enter(0, 0, _T("refused"));
  EXPECT_EQ(Text(0, 0), _T("0"));
  EXPECT_FALSE(history->CanUndo());
  { const lorv::HistoryStep step(*history); }
  Choose(0, 0);
  Type(_T("x"));
  grid->EndEditItem(FALSE);
  EXPECT_FALSE(history->CanUndo());
  EXPECT_FALSE(history->Undo());
  EXPECT_FALSE(history->Redo());
}

// The colour of the row that is selected is nobody's step: neither undo nor redo bring it to a row that the
// user has left, or take it from the one that is selected.
TEST_F(GridHistoryOf, KeepsTheColourOfTheSelectionOutOfIt) {
  Start(3, 2);
  const auto colour = [&](int row) { return grid->GetItem(row, 1)->GetBackgroundColor(); };
  const auto leave = [&] { Choose(2, 0); };
  for (const bool left : {false, true}) {
    Choose(0, 0);
    ASSERT_EQ(colour(0), lorv::kSelectedRowColour);
    {
      const lorv::HistoryStep step(*history);
      grid->SetRowBackgroundColor(0, RGB(255, 0, 0), true);
    }
    ASSERT_EQ(colour(0), RGB(255, 0, 0));
    for (int round = 0; round < 2; ++round) {
      if (left) leave();
      ASSERT_TRUE(history->Undo());
      EXPECT_EQ(colour(0), lorv::kSelectedRowColour) << "it is selected by what undo shows";
      leave();
      EXPECT_EQ(colour(0), lorv::kNoColour);
      if (!left) Choose(0, 0);
      ASSERT_TRUE(history->Redo());
      EXPECT_EQ(colour(0), RGB(255, 0, 0));
    }
    ASSERT_TRUE(history->Undo());
    leave();
    EXPECT_EQ(colour(0), lorv::kNoColour);
    history->Forget();
  }
}

TEST_F(GridHistoryOf, ShowsWhatItTookBack) {
  Start(100, 3);
  Enter(90, 1, _T("x"));
  Choose(0, 0);
  history->Undo();
  EXPECT_EQ(Current(), CBCGPGridItemID(90, 1));
  EXPECT_FALSE(grid->GetItemRect({90, 1}).IsRectEmpty());
}

TEST_F(GridHistoryOf, EndsAnOpenEditorFirst) {
  Start(2, 2);
  Choose(0, 0);
  Type(_T("half"));
  EXPECT_TRUE(history->Undo());
  EXPECT_EQ(Text(0, 0), _T("0"));
  EXPECT_EQ(grid->GetEditingItem(), nullptr);
  EXPECT_TRUE(history->Redo());
  EXPECT_EQ(Text(0, 0), _T("half"));
}

TEST_F(GridHistoryOf, ANewStepEndsWhatCouldBeRedone) {
  Start(4, 2);
  Enter(0, 0, _T("a"));
  grid->InsertRows(0, 1);
  history->Undo();
  history->Undo();
  EXPECT_EQ(history->RedoCount(), 2U);
  Enter(1, 0, _T("b"));
  EXPECT_FALSE(history->CanRedo());
  ExpectOneStep("the new one");
}

TEST_F(GridHistoryOf, DropsTheOldestBeyondItsLimitsAndReports) {
  Start(4, 2);
  std::vector<lorv::HistoryLoss> reported;
  history->SetLossListener([&](std::size_t, lorv::HistoryLoss why) { reported.push_back(why); });
  history->SetLimits(lorv::kMaxHistoryBytes, 3);
  for (int i = 0; i < 3; ++i) Enter(i, 0, _T("a"));
  EXPECT_EQ(history->UndoCount(), 3U);
  EXPECT_TRUE(reported.empty());
  Enter(3, 0, _T("a"));
  EXPECT_EQ(history->UndoCount(), 3U);
  EXPECT_EQ(history->LostSteps(), 1U);
  EXPECT_EQ(reported, std::vector{lorv::HistoryLoss::kStepCount});
  while (history->Undo()) {
  }
  EXPECT_EQ(Text(0, 0), _T("a"));
  EXPECT_EQ(Text(1, 0), _T("10"));
  const std::size_t three = history->Bytes();
  history->SetLimits(three, 3);
  EXPECT_EQ(history->RedoCount(), 3U);
  history->SetLimits(three - 1, 3);
  EXPECT_EQ(history->RedoCount(), 2U);
  EXPECT_EQ(reported.back(), lorv::HistoryLoss::kMemory);
  EXPECT_TRUE(history->Redo());
  EXPECT_EQ(Text(1, 0), _T("a"));
}

TEST_F(GridHistoryOf, AStepBeyondAllMemoryIsLostWithAllOthers) {
  Start(200, 2);
  history->SetLimits(2000);
  Enter(0, 0, _T("a"));
  EXPECT_TRUE(history->CanUndo());
  {
    const lorv::HistoryStep step(*history);
    for (int row = 0; row < 200; ++row) grid->SetValue(row, 1, _variant_t(row));
    grid->DeleteRows(0, 5);
  }
  EXPECT_FALSE(history->CanUndo());
  EXPECT_EQ(history->LostSteps(), 2U);
  EXPECT_EQ(history->Bytes(), 0U);
  first = Now();
  Enter(0, 0, _T("b"));
  ExpectOneStep("after it");
}

TEST_F(GridHistoryOf, ForgetsAnotherTable) {
  Start(4, 3);
  for (const auto& replace : std::vector<std::function<void()>>{
           [&] { grid->AddColumn(_T("c"), 50, nullptr); }, [&] { grid->DeleteColumn(3); },
           [&] { delete grid->GetRow(3); }, [&] { grid->RemoveAll(); }}) {
    Enter(0, 0, _T("x"));
    Enter(0, 0, _T("y"));
    ASSERT_TRUE(history->CanUndo());
    const std::size_t lost = history->LostSteps();
    replace();
    EXPECT_FALSE(history->CanUndo());
    EXPECT_EQ(history->LostSteps(), lost + 2);
  }
}

TEST_F(GridHistoryOf, MayEndBeforeItsGridAndAfterIt) {
  Start(3, 2);
  grid->DeleteRows(0, 1);
  history.reset();
  grid->DeleteRows(0, 1);
  history = std::make_unique<lorv::GridHistory>(*grid);
  grid->DeleteRows(0, 1);
  {
    const lorv::HistoryStep step(*history);
    grid.reset();
  }
  EXPECT_FALSE(history->CanUndo());
  EXPECT_FALSE(history->Undo());
  {
    const lorv::HistoryStep step(*history);
    history.reset();
  }
}

TEST_F(GridHistoryOf, SurvivesTheGridsEndInTheMiddleOfUndo) {
  auto* const ending = new EndingGrid;
  ending->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &top, 9);
  ending->InsertColumns(_T("a,b"), _T(""), 0);
  ending->AppendRows(3);
  lorv::GridHistory of_ending(*ending);
  ending->DeleteRows(0, 1);
  bool ended = false;
  ending->on_chosen = [&] {
    if (!std::exchange(ended, true)) delete ending;
  };
  EXPECT_FALSE(of_ending.Undo());
  EXPECT_TRUE(ended);
  EXPECT_FALSE(of_ending.CanRedo());
}

TEST_F(GridHistoryOf, SurvivesItsOwnEndInTheMiddleOfUndo) {
  EndingGrid ending;
  ending.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &top, 9);
  ending.InsertColumns(_T("a,b"), _T(""), 0);
  ending.AppendRows(3);
  auto of_ending = std::make_unique<lorv::GridHistory>(ending);
  ending.DeleteRows(0, 1);
  ending.on_chosen = [&] { of_ending.reset(); };
  EXPECT_FALSE(of_ending->Undo());
  EXPECT_EQ(of_ending, nullptr);
  EXPECT_EQ(ending.GetRowCount(), 3);
}

TEST_F(GridHistoryOf, PassesOnWhatACellRaisesWhenAllOthersAreBack) {
  Start(4, 2);
  bool armed = false;
  grid->GetRow(1)->ReplaceItem(1, new lorv_test::HostileItem([&] {
                                 if (armed) throw 7;
                               }));
  first = Now();
  {
    const lorv::HistoryStep step(*history);
    for (int row = 0; row < 4; ++row) grid->SetValue(row, 1, _variant_t(row));
  }
  const auto last = Now();
  armed = true;
  EXPECT_THROW(history->Undo(), int);
  EXPECT_EQ(Now(), first);
  EXPECT_THROW(history->Redo(), int);
  EXPECT_EQ(Now(), last);
}

TEST_F(GridHistoryOf, GivesUpWhereACellTearsTheTableDown) {
  Start(4, 2);
  bool armed = false;
  grid->GetRow(1)->ReplaceItem(1, new lorv_test::HostileItem([&] {
                                 if (armed) grid->DeleteRows(2, 1);
                               }));
  {
    const lorv::HistoryStep step(*history);
    for (int row = 0; row < 4; ++row) grid->SetValue(row, 1, _variant_t(row));
  }
  armed = true;
  EXPECT_FALSE(history->Undo());
  EXPECT_FALSE(history->CanUndo());
  EXPECT_FALSE(history->CanRedo());
  armed = false;
  first = Now();
  Enter(0, 0, _T("again"));
  ExpectOneStep("after it");
}

TEST_F(GridHistoryOf, IsSilentWithinAStepAndItself) {
  Start(3, 2);
  Enter(0, 0, _T("x"));
  bool undone = true;
  grid->on_changed = [&](int, int) { undone = history->Undo(); };
  Enter(0, 1, _T("y"));
  EXPECT_FALSE(undone);
  EXPECT_EQ(history->UndoCount(), 2U);
}

TEST_F(GridHistoryOf, TwoHistoriesOfOneGridNeverShareARow) {
  Start(4, 2);
  lorv::GridHistory second(*grid);
  Enter(1, 0, _T("x"));
  EXPECT_TRUE(second.CanUndo());
  grid->DeleteRows(1, 1);
  EXPECT_FALSE(second.CanUndo());
  ASSERT_TRUE(history->Undo());
  ASSERT_TRUE(history->Undo());
  EXPECT_EQ(Now(), first);
}

TEST_F(GridHistoryOfAutoRows, ARowMadeByTypingIsAPartOfTheTypedStep) {
  Fill(2, 2);
  grid->SetAutoAddRow(true);
  history = std::make_unique<lorv::GridHistory>(*grid);
  first = Now();
  Enter(2, 0, _T("new"));
  EXPECT_EQ(grid->GetRowCount(), 3);
  ExpectOneStep("typed into the prepare row");
  Choose(2, 0);
  Type(_T("x"));
  Key(VK_BACK);
  grid->EndEditItem(FALSE);
  EXPECT_FALSE(history->CanUndo());
}
