#include <array>
#include <cstdlib>
#include <memory>
#include <random>

#include "grid/clipboard/grid_clipboard.h"
#include "grid/export/text_export.h"
#include "grid/find/grid_find.h"
#include "grid/history/grid_history.h"
#include "grid/view/grid_sort.h"
#include "tests/grid/suite_desk.h"

// A row of plain cells holds values until somebody asks for a cell. Two grids are given the same work: in one
// every row has its cells from the beginning, in the other none that the work itself does not ask for.
// Nothing else may tell them apart.

namespace {

class Grid : public CBCGPBasicGridCtrl {
 public:
  // As plain rows are, or with the cells that they would have had if somebody had asked for one.
  bool cells_at_once = false;
  using CBCGPBasicGridCtrl::OnHeaderDividerDblClick;
  using CBCGPBasicGridCtrl::ScrollTo;

  CBCGPGridRow* CreateRow(int columns) override {
    CBCGPGridRow* const row = CBCGPBasicGridCtrl::CreateRow(columns);
    if (cells_at_once && row != nullptr) static_cast<void>(row->GetItem(0));
    return row;
  }
};

std::string Shown(const _variant_t& value) {
  std::string text = std::to_string(value.vt) + ":";
  return text + lorv::CellText(value).ToUtf8();
}

class RowValues : public lorv_test::Desk {
 protected:
  static constexpr int kColumns = 4;

  void Make() {
    for (auto& grid : grids_) grid = std::make_unique<Grid>();
    grids_[1]->cells_at_once = true;
    Both([this](Grid& grid) {
      grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 120), &top, 7);
      grid.InsertColumns(_T("a,b,c,d"), _T(""), 0);
      grid.AppendRows(30);
    });
    desktop.RunUntilIdle();
  }

  int Below(int count) { return count <= 0 ? 0 : std::uniform_int_distribution<>(0, count - 1)(random_); }

  _variant_t AnyValue() {
    switch (Below(7)) {
      case 0:
        return {};
      case 1:
        return _variant_t(Below(100));
      case 2:
        return _variant_t(Below(100) / 8.0);
      case 3:
        return _variant_t(Below(2) == 1);
      case 4:
        return _variant_t(_T(""));
      case 5:
        return _variant_t(static_cast<IUnknown*>(nullptr));
      default: {
        CString text;
        text.Format(_T("柱 %d"), Below(30));
        if (Below(3) == 0) text += text;
        return _variant_t(text);
      }
    }
  }

  template <class Work>
  void Both(Work work) {
    for (const auto& grid : grids_) work(*grid);
  }

  void SetSome() {
    for (int i = Below(12); i >= 0; --i) {
      const int row = Below(34) - 1;
      const int column = Below(kColumns + 2) - 1;
      const BOOL redraw = Below(3) == 0;
      const _variant_t value = AnyValue();
      Both([&](Grid& grid) { grid.SetValue(row, column, value, redraw); });
    }
  }

  void ChangeRows() {
    const int at = Below(30);
    const int count = 1 + Below(3);
    switch (Below(5)) {
      case 0:
        return Both([&](Grid& grid) { grid.InsertRows(at, count); });
      case 1:
        return Both([&](Grid& grid) { grid.DeleteRows(at, count); });
      case 2:
        return Both([&](Grid& grid) { grid.AppendRows(count); });
      case 3: {
        const _variant_t value = AnyValue();
        return Both([&](Grid& grid) { AddByHand(grid, value); });
      }
      default:
        return Both([&](Grid& grid) { grid.RemoveRow(at, FALSE); });
    }
  }

  // A row that a host makes cell by cell.
  static void AddByHand(Grid& grid, const _variant_t& value) {
    auto row = std::make_unique<CBCGPGridRow>(kColumns);
    for (int column = 0; column < kColumns; ++column) {
      if (grid.cells_at_once)
        row->AddItem(new CBCGPGridItem(value));
      else
        row->AddValue(value);
    }
    if (grid.AddRow(row.get(), TRUE) >= 0) static_cast<void>(row.release());
  }

  void ChangeColumns() {
    const int column = Below(grids_[0]->GetColumnCount());
    const int to = Below(grids_[0]->GetColumnCount());
    switch (Below(4)) {
      case 0:
        if (grids_[0]->GetColumnCount() < 7)
          Both([&](Grid& grid) { grid.AddColumn(_T("new"), 60, nullptr); });
        return;
      case 1:
        if (grids_[0]->GetColumnCount() > 2) Both([&](Grid& grid) { grid.DeleteColumn(column); });
        return;
      case 2:
        return Both([&](Grid& grid) { grid.MoveColumn(column, to); });
      default:
        return Both([&](Grid& grid) { grid.OnHeaderDividerDblClick(column); });
    }
  }

  void Arrange() {
    const int column = Below(grids_[0]->GetColumnCount());
    const BOOL up = Below(2);
    const int how = Below(4);
    CString text;
    text.Format(_T("%d"), Below(5));
    Both([&](Grid& grid) {
      if (how == 0) grid.Sort(column, up);
      if (how == 1) {
        const lorv::GridSort sort(grid);
        grid.Sort(column, up);
      }
      if (how == 2) {
        grid.EnableFilterBar();
        grid.SetFilterBarText(column, text);
      }
      if (how == 3) {
        grid.InsertGroupColumn(0, column);
        grid.RemoveGroupColumn(0);
        grid.EnableFilterBar(FALSE);
      }
    });
  }

  void ChangeCell() {
    const int row = Below(30);
    const int column = Below(kColumns);
    const auto colour = static_cast<COLORREF>(Below(3));
    const int how = Below(5);
    Both([&](Grid& grid) {
      CBCGPGridItem* const item = how < 3 ? grid.GetItem(row, column) : nullptr;
      if (how == 0 && item != nullptr) item->SetBackgroundColor(colour);
      if (how == 1 && item != nullptr) item->SetReadOnly(colour != 0 ? TRUE : FALSE);
      if (how == 2 && item != nullptr) item->AddOption(_T("o"));
      auto check = std::make_unique<CBCGPGridCheckItem>(true);
      if (how == 3 && grid.ReplaceItem(row, column, check.get(), FALSE) != 0)
        static_cast<void>(check.release());
      if (how == 4) grid.ClearRange({0, row, column, row + 3}, TRUE, FALSE, nullptr);
    });
  }

  // With its end the steps are undone, or stay.
  void ChangeWithHistory() {
    std::vector<std::unique_ptr<lorv::GridHistory>> histories;
    Both([&](Grid& grid) {
      histories.push_back(std::make_unique<lorv::GridHistory>(grid));
      histories.back()->SetProgramChanges(lorv::ProgramChanges::kAlways);
    });
    SetSome();
    ChangeRows();
    if (Below(2) == 0) return;
    for (const auto& history : histories)
      while (history->Undo()) {
      }
  }

  void Do() {
    switch (Below(9)) {
      case 0:
        return ChangeRows();
      case 1:
        return ChangeColumns();
      case 2:
        return Arrange();
      case 3:
        return ChangeCell();
      case 4:
        return ChangeWithHistory();
      case 5: {
        const int place = Below(400);
        Both([&](Grid& grid) { grid.ScrollTo(0, place); });
        return;
      }
      default:
        return SetSome();
    }
  }

  // What can be seen, by ways that ask for no cell.
  std::string State(Grid& grid) {
    std::string state = std::to_string(grid.GetColumnCount()) + " columns";
    for (int column = 0; column < grid.GetColumnCount(); ++column)
      state += " " + std::to_string(grid.GetColumnWidth(column));
    for (int row = 0; row < grid.CBCGPGridCtrl::GetRowCount(); ++row) {
      const CBCGPGridRow& cells = *grid.CBCGPGridCtrl::GetRow(row);
      state += grid.IsRowShown(row) ? "\n" : "\nhidden ";
      for (int column = -1; column <= cells.GetItemCount(); ++column) {
        state += cells.HasItem(column) ? Shown(cells.CopyValue(column)) : std::string("none");
        state += std::to_string(cells.GetValueType(column)) + "=" + cells.GetCellText(column).ToUtf8();
        state += "|" + Shown(grid.GetValue(row, column)) + " ";
      }
    }
    return state + Exported(grid) + Copied(grid) + Found(grid);
  }

  static std::string Exported(Grid& grid) {
    std::string all;
    lorv::ExportText(grid, {}, [&](std::string_view piece) {
      all += piece;
      return true;
    });
    return all;
  }

  std::string Copied(Grid& grid) {
    grid.SetCurSel(CBCGPGridItemID(0, 0));
    grid.SetCurSel(CBCGPGridItemID(20, 2), lorv::kSelectOppositeCorner);
    lorv::GridClipboard(grid).Copy();
    const std::vector<BYTE> html = desktop.ClipboardBytes(_T("HTML Format"));
    return desktop.ClipboardText().ToUtf8() + std::string(html.begin(), html.end());
  }

  static std::string Found(Grid& grid) {
    lorv::GridFind find(grid);
    lorv::FindOptions options;
    options.text = _T("2");
    find.SetOptions(options);
    return std::to_string(find.Count());
  }

  // Asks for the cells of both.
  void ExpectSameCells() {
    for (int row = 0; row < grids_[0]->CBCGPGridCtrl::GetRowCount(); ++row)
      for (int column = 0; column < grids_[0]->GetColumnCount(); ++column) {
        const CBCGPGridItem* const one = grids_[0]->GetItem(row, column);
        const CBCGPGridItem* const other = grids_[1]->GetItem(row, column);
        ASSERT_EQ(one == nullptr, other == nullptr);
        if (one == nullptr) continue;
        ASSERT_EQ(Shown(one->GetValue()), Shown(other->GetValue()));
        ASSERT_EQ(one->GetLooks(), other->GetLooks());
        ASSERT_EQ(one->GetColumnId(), column);
        ASSERT_EQ(one->GetParentRow(), grids_[0]->CBCGPGridCtrl::GetRow(row));
        ASSERT_EQ(one->GetOptionCount(), other->GetOptionCount());
        ASSERT_EQ(one->GetRuntimeClass(), other->GetRuntimeClass());
        ASSERT_EQ(one->GetData(), other->GetData());
        ASSERT_EQ(one->GetRect(), other->GetRect());
      }
  }

  void Run(unsigned seed) {
    random_.seed(seed);
    Make();
    for (int step = 0; step < 25; ++step) {
      Do();
      desktop.RunUntilIdle();
      ASSERT_EQ(State(*grids_[0]), State(*grids_[1])) << "seed " << seed << ", step " << step;
      for (int row = 0; row < grids_[0]->CBCGPGridCtrl::GetRowCount(); ++row)
        for (int column = 0; column < 3; ++column)
          ++(grids_[0]->CBCGPGridCtrl::GetRow(row)->FindItem(column) == nullptr ? values_ : cells_);
    }
    ExpectSameCells();
    EXPECT_FALSE(HasFatalFailure()) << "seed " << seed;
  }

  std::array<std::unique_ptr<Grid>, 2> grids_;
  std::mt19937 random_;
  long long values_ = 0;  // those that had no cell, over all steps, and those that had one
  long long cells_ = 0;
};

}  // namespace

TEST_F(RowValues, LookLikeCellsThroughRandomWork) {
  const char* const asked_for = std::getenv("LORV_ROW_SCRIPTS");
  const int scripts = asked_for == nullptr ? 60 : std::atoi(asked_for);
  for (int seed = 0; seed < scripts && !HasFailure(); ++seed) Run(static_cast<unsigned>(seed));
  EXPECT_GT(values_, 300 * scripts);
  EXPECT_GT(cells_, 300 * scripts);
}
