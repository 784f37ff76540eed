#include "gridcore/control/grid_changes.h"

#include <gtest/gtest.h>

#include "gridcore/items/check_item.h"
#include "tests/gridcore/control/grid_desk.h"

namespace {

using lorv_test::GridDesk;
using lorv_test::Notes;

std::string TextOf(const _variant_t& value) {
  return value.vt == VT_EMPTY ? "empty" : CString(static_cast<LPCTSTR>(_bstr_t(value))).ToUtf8();
}

// Writes down what it is notified of, and keeps the rows that are taken out where the test wants.
class Listener : public lorv::GridObserver {
 public:
  Notes notes;
  bool keeps_rows = false;
  std::vector<std::unique_ptr<CBCGPGridRow>> kept;
  std::function<void()> on_value;

  Notes Taken() { return std::exchange(notes, {}); }

  void OnStepBegins(lorv::StepKind kind, const CBCGPGridItem* subject) override {
    std::string note = kind == lorv::StepKind::kOwn ? "begin" : "begin part";
    if (subject != nullptr) note += " of " + std::to_string(subject->GetColumnId());
    notes.push_back(note);
  }
  void OnStepEnds() override { notes.emplace_back("end"); }
  void OnEditorClosed() override { notes.emplace_back("editor closed"); }
  void OnValueChanged(CBCGPGridItem& item, _variant_t& before, lorv::ChangeBy by) override {
    notes.push_back(TextOf(before) + " to " + TextOf(item.GetValue()) +
                    (by == lorv::ChangeBy::kUser ? " by user" : ""));
    before.Clear();
    if (on_value) on_value();
  }
  void OnLooksChanging(CBCGPGridItem& item) override {
    notes.push_back("looks " + std::to_string(item.GetLooks().back));
  }
  void OnRowInserted(const lorv::RowPlace& place, CBCGPGridRow& row) override {
    notes.push_back("in " + std::to_string(place.index) + (row.GetParentRow() != nullptr ? " nested " : "") +
                    (place.parent != nullptr ? std::to_string(place.place) : ""));
  }
  void OnRowRemoved(const lorv::RowPlace& place, std::unique_ptr<CBCGPGridRow>& row) override {
    notes.push_back("out " + std::to_string(place.index) +
                    (place.parent != nullptr ? " nested " + std::to_string(place.place) : ""));
    if (keeps_rows) kept.push_back(std::move(row));
  }
  void OnRowsMoving(lorv::RowArrangement& now) override {
    notes.push_back("moving " + std::to_string(now.rows.size()) + " by " + std::to_string(now.sort_column));
  }
  void OnMergesChanging(const std::vector<CBCGPGridRange>& now) override {
    notes.push_back("merging " + std::to_string(now.size()));
  }
  void OnTableReplaced() override { notes.emplace_back("replaced"); }
  void OnGridGone() override { notes.emplace_back("gone"); }
};

class GridChangesOf : public GridDesk {
 protected:
  // The grid ends after the listener.
  ~GridChangesOf() override {
    if (grid != nullptr) grid->Changes().Remove(listener);
  }
  // Without the ends of steps.
  Notes TakenChanges() {
    Notes notes = listener.Taken();
    std::erase_if(notes, [](const std::string& note) { return note == "begin" || note == "end"; });
    return notes;
  }
  void Watch(int rows, int columns) {
    Fill(rows, columns);
    grid->Changes().Add(listener);
  }
  Listener listener;
};

// Counts the ends of rows.
class EndingRow : public CBCGPGridRow {
 public:
  EndingRow(CBCGPGridCtrl& grid, int& ends) : ends_(ends) { grid.SetupRow(this, grid.GetColumnCount()); }
  ~EndingRow() override { ++ends_; }

 private:
  int& ends_;
};

}  // namespace

TEST_F(GridChangesOf, ReportsValuesWithTheOldOne) {
  Watch(2, 2);
  At(0, 1)->SetValue(_variant_t(7));
  At(0, 1)->SetValue(At(0, 1)->GetValue());
  EXPECT_EQ(listener.Taken(), (Notes{"1 to 7", "7 to 7"}));
  At(0, 1)->ChangeType(_variant_t(_T("")));
  EXPECT_EQ(listener.Taken(), Notes{"7 to "});
  EXPECT_EQ(At(0, 1)->GetValue().vt, VT_BSTR);
  grid->ClearRange({0, 0, 1, 0});
  EXPECT_EQ(listener.Taken(), (Notes{"0 to empty", " to empty"}));
}

TEST_F(GridChangesOf, GivesEachObserverTheOldValue) {
  Watch(1, 1);
  Listener second;
  grid->Changes().Add(second);
  grid->Changes().Add(second);
  At(0, 0)->SetValue(_variant_t(_T("x")));
  EXPECT_EQ(listener.Taken(), Notes{"0 to x"});
  EXPECT_EQ(second.Taken(), Notes{"0 to x"});
  grid->Changes().Remove(second);
  At(0, 0)->SetValue(_variant_t(1));
  EXPECT_EQ(second.Taken(), Notes{});
}

TEST_F(GridChangesOf, LetsObserversGoInTheMiddleOfACall) {
  Watch(1, 1);
  Listener second;
  grid->Changes().Add(second);
  listener.on_value = [&] {
    grid->Changes().Remove(listener);
    grid->Changes().Remove(second);
  };
  At(0, 0)->SetValue(_variant_t(1));
  At(0, 0)->SetValue(_variant_t(2));
  EXPECT_EQ(listener.Taken(), Notes{"0 to 1"});
  EXPECT_EQ(second.Taken(), Notes{});
  EXPECT_FALSE(grid->Changes().AreWatched());
}

TEST_F(GridChangesOf, SaysWhichChangeIsTheUsersAndWhatIsOneStep) {
  Watch(2, 2);
  Choose(0, 1);
  listener.Taken();
  desktop.Type(_T("5"));
  Run();
  grid->on = [&](const std::string& what) {
    if (what.rfind("changed", 0) == 0) At(1, 0)->SetValue(_variant_t(99));
  };
  grid->EndEditItem(TRUE);
  EXPECT_EQ(listener.Taken(), (Notes{"begin of 1", "1 to 5 by user", "10 to 99", "editor closed", "end"}));
}

TEST_F(GridChangesOf, ReportsATickAsTheUsers) {
  Watch(1, 1);
  grid->GetRow(0)->ReplaceItem(0, new CBCGPGridCheckItem(false));
  listener.Taken();
  At(0, 0)->OnSpace();
  EXPECT_EQ(listener.Taken(), (Notes{"begin of 0", "0 to -1 by user", "end"}));
}

TEST_F(GridChangesOf, ReportsLooksOnlyWhereTheyChange) {
  Watch(1, 1);
  At(0, 0)->SetBackgroundColor(5);
  At(0, 0)->SetBackgroundColor(5);
  At(0, 0)->SetTextColor(6);
  At(0, 0)->SetReadOnly(TRUE);
  At(0, 0)->SetReadOnly(TRUE);
  At(0, 0)->SetImage(2);
  EXPECT_EQ(listener.Taken().size(), 4U);
  const lorv::ItemLooks looks = At(0, 0)->GetLooks();
  At(0, 0)->SetLooks(looks);
  At(0, 0)->SetItemChanged();
  EXPECT_EQ(listener.Taken(), Notes{});
  At(0, 0)->SetReadOnly(FALSE);
  At(0, 0)->SetImage(-1);
  listener.Taken();
  At(0, 0)->SetLooks(looks);
  EXPECT_EQ(listener.Taken(), Notes{"looks 5"});
  EXPECT_TRUE(At(0, 0)->IsReadOnly() && At(0, 0)->IsItemChanged());
  EXPECT_EQ(At(0, 0)->GetImage(), 2);
}

TEST_F(GridChangesOf, ReportsRowsAndTheirPlaces) {
  Watch(2, 1);
  grid->AddRow(TRUE);
  grid->InsertRowBefore(0, grid->CreateRow(1));
  grid->GetRow(0)->AddSubItem(grid->CreateRow(1));
  grid->InsertRowAfter(1, grid->CreateRow(1));
  grid->RemoveRow(2);
  grid->RemoveRow(0);
  EXPECT_EQ(TakenChanges(),
            (Notes{"in 2", "in 0", "in 1 nested 0", "in 2 nested 1", "out 2 nested 1", "out 0"}));
}

TEST_F(GridChangesOf, LetsAnObserverKeepARow) {
  int ends = 0;
  Watch(1, 1);
  grid->AddRow(new EndingRow(*grid, ends), TRUE);
  grid->AddRow(new EndingRow(*grid, ends), TRUE);
  listener.keeps_rows = true;
  grid->RemoveRow(1);
  EXPECT_EQ(ends, 0);
  ASSERT_EQ(listener.kept.size(), 1U);
  EXPECT_EQ(listener.kept[0]->GetRowId(), -1);
  listener.keeps_rows = false;
  grid->RemoveRow(1);
  EXPECT_EQ(ends, 1);
}

TEST_F(GridChangesOf, ReportsMergesBeforeTheyChange) {
  Watch(4, 2);
  grid->MergeRange({0, 1, 1, 2});
  grid->MergeRange({0, 1, 1, 2});
  grid->MergeRange({0, 0, 0, 0});
  grid->RemoveRow(1);
  grid->UnmergeAt({1, 0});
  grid->UnmergeAt({1, 0});
  EXPECT_EQ(TakenChanges(), (Notes{"merging 0", "merging 1", "out 1", "merging 1"}));
}

TEST_F(GridChangesOf, ReportsAnotherOrder) {
  Watch(3, 2);
  grid->Sort(1, FALSE);
  grid->Sort(0);
  EXPECT_EQ(listener.Taken(), (Notes{"moving 3 by -1", "moving 3 by 1"}));
  grid->InsertGroupColumn(0, 1);
  grid->RemoveGroupColumn(0);
  const Notes notes = listener.Taken();
  EXPECT_EQ(notes.front(), "begin");
  EXPECT_EQ(notes.back(), "end");
}

TEST_F(GridChangesOf, ReportsWhenTheTableIsAnotherOne) {
  Watch(2, 2);
  grid->InsertColumn(2, _T("c"));
  grid->DeleteColumn(0);
  delete grid->GetRow(0);
  grid->RemoveAll();
  EXPECT_EQ(listener.Taken(), (Notes{"replaced", "replaced", "replaced", "replaced"}));
}

TEST_F(GridChangesOf, StaysSilentOfRowsThatAreNotInTheTable) {
  Watch(1, 1);
  const std::unique_ptr<CBCGPGridRow> row(grid->CreateRow(1));
  row->GetItem(0)->SetValue(_variant_t(1));
  grid->EnableVirtualMode(
      [](CBCGPGridRow& made, int index) { made.GetItem(0)->SetValue(_variant_t(index)); });
  listener.Taken();
  grid->SetVirtualRows(10);
  grid->GetRow(3)->GetItem(0)->SetValue(_variant_t(9));
  EXPECT_EQ(listener.Taken(), Notes{});
}

TEST_F(GridChangesOf, ReportsTheGridsEndAndOutlivesAStep) {
  Watch(1, 1);
  {
    const lorv::StepScope step(grid->Changes());
    grid.reset();
  }
  const Notes notes = listener.Taken();
  EXPECT_EQ(notes[0], "begin");
  EXPECT_EQ(notes[1], "gone");
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "end"), 0);
}
