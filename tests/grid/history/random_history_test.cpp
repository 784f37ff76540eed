#include <cstdlib>
#include <random>

#include "tests/grid/history/history_desk.h"

// Random runs of what changes a table, undone in part and wholly: each state on the way back must be, cell
// for cell, the one that stood there on the way out.

namespace {

using Grid = lorv_test::HostileGrid<CBcgTrueDbGridCtrlEx>;

class RandomHistory : public lorv_test::HistoryDesk<Grid> {
 protected:
  int Below(int count) { return count <= 0 ? 0 : std::uniform_int_distribution<>(0, count - 1)(random_); }
  int Row() { return Below(grid->CBCGPGridCtrl::GetRowCount()); }
  int Column() { return Below(grid->GetColumnCount()); }

  _variant_t AnyValue() {
    switch (Below(6)) {
      case 0:
        return {};
      case 1:
        return _variant_t(Below(1000));
      case 2:
        return _variant_t(Below(1000) / 8.0);
      case 3:
        return _variant_t(Below(2) == 1);
      default: {
        CString text;
        text.Format(_T("文本 %d"), Below(50));
        return _variant_t(text);
      }
    }
  }

  void SetSome() {
    for (int i = Below(4); i >= 0; --i) {
      const int row = Row();
      grid->SetValue(row, Column(), AnyValue());
    }
  }

  void Colour() {
    CBCGPGridItem* const item = grid->GetItem(Row(), Column());
    if (item == nullptr) return;
    item->SetBackgroundColor(static_cast<COLORREF>(Below(5)));
    item->SetReadOnly(Below(4) == 0);
    item->SetImage(Below(3) - 1);
  }

  void Merge() {
    const int row = Row();
    const int column = Column();
    grid->MergeRange({column, row, column + Below(3), row + Below(3)});
  }

  void Nest() {
    CBCGPGridRow* const parent = grid->GetRow(Row());
    if (parent == nullptr || parent == grid->GetPrepareRow()) return;
    std::unique_ptr<CBCGPGridRow> row(grid->CreateRow(grid->GetColumnCount()));
    if (parent->AddSubItem(row.get()) >= 0) static_cast<void>(row.release());
  }

  void Do() {
    switch (Below(14)) {
      case 0:
        return SetSome();
      case 1:
        return Colour();
      case 11:
      case 12:
        grid->MoveColumn(Column(), Column());
        return;
      case 2:
        return Merge();
      case 3:
        grid->UnmergeAt({Row(), Column()});
        return;
      case 4:
        grid->InsertRows(Row(), 1 + Below(3));
        return;
      case 5:
        grid->DeleteRows(Row(), 1 + Below(2));
        return;
      case 6:
        grid->Sort(Column(), Below(2));
        return;
      case 7:
        return Nest();
      case 8:
        grid->AppendRows(1 + Below(2));
        return;
      case 9:
        grid->SelectRow(Row());
        grid->DeleteSelectedRows();
        return;
      default: {
        CString text;
        text.Format(_T("%d"), Below(100));
        return Enter(Row(), Column(), Below(3) == 0 ? _T("abc") : static_cast<LPCTSTR>(text));
      }
    }
  }

  // One or more changes; the states are those between steps.
  void Change() {
    if (Below(4) > 0) return Do();
    const lorv::HistoryStep step(*history);
    for (int i = Below(5); i >= 0; --i) Do();
  }

  std::size_t Place() const { return history->UndoCount(); }

  void Remember() {
    const std::size_t place = Place();
    if (states_.size() <= place) states_.resize(place + 1);
    states_[place] = Now();
    states_.resize(place + 1);
  }

  void Run(unsigned seed) {
    random_.seed(seed);
    grid = std::make_unique<Grid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    grid->InsertColumns(_T("a,b,c,d"), _T(""), 0);
    grid->AppendRows(5);
    if (seed % 2 == 0) grid->SetAutoAddRow(true);
    desktop.RunUntilIdle();
    history = std::make_unique<lorv::GridHistory>(*grid);
    history->SetProgramChanges(lorv::ProgramChanges::kAlways);
    states_ = {Now()};
    for (int i = 0; i < 40; ++i) {
      if (Below(5) == 0) {
        const bool moved = Below(2) == 0 ? history->Undo() : history->Redo();
        if (moved) CompareHere();
        if (HasFatalFailure()) return;
        continue;
      }
      const std::size_t before = Place();
      Change();
      // A change is a step or leaves the table as it was; some are more than one.
      if (Place() == before + 1 && history->RedoCount() == 0) {
        Remember();
      } else if (Place() == before) {
        CompareHere();
        if (HasFatalFailure()) return;
      } else {
        states_.resize(before + 1);
        states_.resize(Place() + 1);
        states_[Place()] = Now();
      }
    }
    ThereAndBack();
  }

  // Some changes are several steps; what stood between those is not known.
  void CompareHere() {
    const auto& known = states_[Place()];
    ASSERT_TRUE(known.empty() || Now() == known) << Place();
  }

  void ThereAndBack() {
    while (history->CanRedo()) ASSERT_TRUE(history->Redo());
    const auto last = Now();
    for (int turn = 0; turn < 2; ++turn) {
      while (history->CanUndo()) {
        ASSERT_TRUE(history->Undo());
        CompareHere();
        if (HasFatalFailure()) return;
      }
      ASSERT_EQ(Now(), states_[0]);
      while (history->CanRedo()) ASSERT_TRUE(history->Redo());
      ASSERT_EQ(Now(), last);
    }
    ASSERT_EQ(history->LostSteps(), 0U);
  }

 private:
  std::mt19937 random_;
  std::vector<std::vector<std::string>> states_;
};

}  // namespace

TEST_F(RandomHistory, UndoneWhollyGivesTheFirstTableAndRedoneTheLast) {
  const char* const wanted = std::getenv("LORV_TEST_SCRIPTS");
  const unsigned count = wanted == nullptr ? 60U : static_cast<unsigned>(std::atoi(wanted));
  for (unsigned seed = 0; seed < count; ++seed) {
    SCOPED_TRACE(seed);
    Run(seed);
    if (HasFatalFailure()) return;
  }
}
