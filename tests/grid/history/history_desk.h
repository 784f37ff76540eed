#pragma once

#include <string>
#include <vector>

#include "grid/history/grid_history.h"
#include "tests/grid/suite_desk.h"

namespace lorv_test {

// All that undo and redo promise to bring back of a table, as texts to be compared.
template <class Grid>
std::vector<std::string> StateOf(Grid& grid) {
  std::vector<std::string> state;
  const auto number = [](auto value) { return std::to_string(value) + " "; };
  for (int at = 0; at < grid.CBCGPGridCtrl::GetRowCount(); ++at) {
    const CBCGPGridRow* const row = grid.CBCGPGridCtrl::GetRow(at);
    std::string line = number(row->GetLevel());
    for (int column = 0; column < row->GetItemCount(); ++column) {
      const CBCGPGridItem* const item = row->GetItem(column);
      lorv::ItemLooks looks = item->GetLooks();
      // That only shows which row is selected.
      if (looks.back == lorv::kSelectedRowColour) looks.back = lorv::kNoColour;
      line += std::string(item->GetRuntimeClass()->m_lpszClassName) + " " + number(item->GetValue().vt) +
              item->FormatItem().ToUtf8() + " " + number(looks.back) + number(looks.text) +
              number(looks.image) + number(looks.states) + "|";
    }
    state.push_back(line);
  }
  std::vector<CBCGPGridRange> merged;
  grid.GetMergedItemsInRange({0, 0, 10000, 10000000}, merged);
  for (const CBCGPGridRange& block : merged)
    state.push_back("merged " + number(block.m_nTop) + number(block.m_nLeft) + number(block.m_nBottom) +
                    number(block.m_nRight));
  std::string columns = "columns";
  for (int column = 0; column < grid.GetColumnCount(); ++column)
    columns += " " + grid.GetColumnName(column).ToUtf8();
  state.push_back(columns);
  state.push_back("sorted " + number(grid.GetSortColumn()) + number(grid.IsSortedAscending()));
  return state;
}

// What a test does to a grid goes through these, so that its handlers can be hostile.
template <class Base>
class HostileGrid : public Base {
 public:
  std::function<void(int row, int column)> on_changed;

  void OnItemChanged(CBCGPGridItem* item, int row, int column) override {
    const auto life = this->Watch();
    const auto copy = on_changed;
    if (copy) copy(row, column);
    if (!life.expired()) Base::OnItemChanged(item, row, column);
  }
};

// A cell that does what the test wants while it gets its value.
class HostileItem : public CBCGPGridItem {
 public:
  explicit HostileItem(std::function<void()> does) : CBCGPGridItem(_variant_t()), does_(std::move(does)) {}
  void SetValue(const _variant_t& value, BOOL redraw) override {
    const auto copy = does_;
    const auto set = value;
    CBCGPGridItem::SetValue(set, redraw);
    copy();
  }

 private:
  std::function<void()> does_;
};

template <class Grid>
class HistoryDesk : public SuiteDesk<Grid> {
 protected:
  HistoryDesk() {
    this->grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &this->top, 7);
    this->Run();
  }
  void Start(int rows, int columns) {
    this->Fill(rows, columns);
    history = std::make_unique<lorv::GridHistory>(*this->grid);
    first = StateOf(*this->grid);
  }
  std::vector<std::string> Now() { return StateOf(*this->grid); }
  // One step: undone the first table, redone the present one.
  void ExpectOneStep(const char* what) {
    const auto last = Now();
    EXPECT_NE(last, first) << what;
    EXPECT_EQ(history->UndoCount(), 1U) << what;
    EXPECT_TRUE(history->Undo()) << what;
    EXPECT_EQ(Now(), first) << what;
    EXPECT_FALSE(history->CanUndo()) << what;
    EXPECT_TRUE(history->Redo()) << what;
    EXPECT_EQ(Now(), last) << what;
    EXPECT_FALSE(history->CanRedo()) << what;
    EXPECT_TRUE(history->Undo()) << what;
    EXPECT_EQ(Now(), first) << what;
    history->Forget();
  }
  void Enter(int row, int column, LPCTSTR text) {
    this->Choose(row, column);
    this->Type(text);
    this->grid->EndEditItem(TRUE);
    this->Run();
  }

  std::unique_ptr<lorv::GridHistory> history;
  std::vector<std::string> first;
};

}  // namespace lorv_test
