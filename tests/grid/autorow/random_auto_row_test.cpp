#include <cstdlib>
#include <optional>
#include <random>

#include "tests/grid/autorow/auto_row_desk.h"

// Random scripts for the auto-row grid: once beside a plain model of the table, which says what must stand
// after each step, and once with handlers that pull the table away.

namespace {

// Rows of texts, the current cell and what stands in the editor, by the rules of the prepare row.
struct PlainTable {
  using Row = std::vector<std::string>;
  std::vector<Row> rows;
  int columns = 3;
  bool on = false;
  bool same_2014 = false;
  bool last_hidden = false;
  int row = -1;
  int column = -1;
  std::optional<std::string> editor;
  bool whole_selected = false;

  int Listed() const { return static_cast<int>(rows.size()); }
  int Count() const { return on ? std::max(0, Listed() - 1) : Listed(); }
  bool Shows(int at) const { return !(last_hidden && at == columns - 1); }
  std::string& Cell(int r, int c) { return rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)]; }

  bool IsEmpty(int r) {
    if (r < 0 || r >= Listed()) return false;
    for (int c = 0; c < columns; ++c) {
      if (!Shows(c)) continue;
      if (!Cell(r, c).empty()) return false;
      if (!same_2014 && editor && r == row && c == column && !editor->empty()) return false;
    }
    return true;
  }
  void LayOut() {
    if (row < 0 && Count() > 0) row = column = 0;
  }
  int Add() {
    rows.emplace_back(static_cast<std::size_t>(columns));
    LayOut();
    return Listed() - 1;
  }
  int Remove(int r) {
    if (on && r == Count() && !IsEmpty(r - 1)) return 0;
    if (r < 0 || r >= Listed()) return 0;
    if (row == r) {
      editor.reset();
      row = column = -1;
    } else if (row > r) {
      --row;
    }
    rows.erase(rows.begin() + r);
    LayOut();
    return 1;
  }
  void RemoveAll() {
    editor.reset();
    rows.clear();
    row = column = -1;
    if (on) Add();
  }
  void ReDim(int count) {
    RemoveAll();
    for (int i = 0; i < count; ++i) Add();
    if (!on) return;
    Add();
    Changed();
  }
  void Changed() {
    if (!on) return;
    const int last = Count();
    const bool empty = IsEmpty(last);
    if (empty != IsEmpty(last - 1)) return;
    if (!empty)
      Add();
    else
      Remove(row == last ? last - 1 : last);
  }
  void Switch(bool to) {
    on = to;
    if (on && (rows.empty() || !IsEmpty(Listed() - 1))) Add();
  }
  void EndEdit(bool save) {
    if (editor && save) Cell(row, column) = *editor;
    editor.reset();
  }
  void Choose(int r, int c) {
    if (r < 0 || r >= Listed() || (r == row && c == column)) return;
    EndEdit(true);
    row = r;
    column = c;
  }
  void Type(const std::string& text) {
    if (row < 0 || (!editor && !Shows(column))) return;
    const bool opens = !editor;
    const std::string before = opens ? Cell(row, column) : *editor;
    editor = opens || whole_selected ? text : *editor + text;
    whole_selected = false;
    if (!opens || *editor != before) Changed();
  }
  void EraseLast() {
    if (!editor || editor->empty()) return;
    if (whole_selected)
      editor->clear();
    else
      editor->pop_back();
    whole_selected = false;
    Changed();
  }
  void Open() {
    if (editor || row < 0 || !Shows(column)) return;
    editor = Cell(row, column);
    whole_selected = true;
  }
  void Set(int r, int c, const std::string& text) {
    if (r < 0 || r >= Count()) return;
    if (editor && r == row && c == column) EndEdit(false);
    Cell(r, c) = text;
  }
};

class RandomAutoRow : public lorv_test::AutoRowDesk {
 protected:
  int Number(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }

  void Step() {
    const int what = Number(20);
    if (what < 6) return TypeLetter();
    if (what < 9) {
      model.EraseLast();
      Key(VK_BACK);
    } else if (what < 12) {
      const int row = Number(grid->Listed() + 1);
      const int column = Number(3);
      model.Choose(row, column);
      Choose(row, column);
    } else if (what < 14) {
      const bool save = Number(2) == 0;
      model.EndEdit(save);
      grid->EndEditItem(save ? TRUE : FALSE);
    } else if (what == 14) {
      model.Open();
      Key(VK_F2);
    } else {
      Rebuild(what);
    }
    Run();
  }
  void TypeLetter() {
    const char letter = static_cast<char>('a' + Number(3));
    model.Type(std::string(1, letter));
    Type(CString(static_cast<TCHAR>(letter)));
  }
  void Rebuild(int what) {
    const int row = Number(grid->Listed() + 2) - 1;
    if (what == 15) {
      ASSERT_EQ(grid->AddRow(TRUE), model.Add());
    } else if (what == 16) {
      const int wanted = model.Remove(row);
      ASSERT_EQ(grid->RemoveRow(row, TRUE), wanted) << row;
    } else if (what == 17) {
      const int column = Number(3);
      const bool empty = Number(3) == 0;
      model.Set(row, column, empty ? "" : "v");
      grid->SetValue(row, column, empty ? _variant_t() : _variant_t(_T("v")), TRUE);
    } else if (what == 18) {
      SwitchOne(Number(4));
    } else if (Number(4) == 0) {
      const int count = Number(4);
      const bool redim = Number(2) == 0;
      if (redim)
        model.ReDim(count);
      else
        model.RemoveAll();
      if (redim)
        grid->ReDim(count, 3);
      else
        grid->RemoveAll();
    }
  }
  void SwitchOne(int which) {
    if (which < 2) {
      const bool on = Number(4) != 0;
      model.Switch(on);
      grid->SetAutoAddRow(on);
    } else if (which == 2) {
      model.same_2014 = !model.same_2014;
      grid->SetIsSame2014(model.same_2014);
    } else if (!model.editor) {
      model.last_hidden = !model.last_hidden;
      grid->SetColumnVisible(2, model.last_hidden ? FALSE : TRUE);
      grid->AdjustLayout();
      model.LayOut();
    }
  }
  void Compare() {
    ASSERT_EQ(grid->Listed(), model.Listed());
    ASSERT_EQ(grid->GetRowCount(), model.Count());
    for (int row = 0; row < model.Listed(); ++row) {
      ASSERT_EQ(grid->GetRow(row), row < model.Count() ? grid->At(row) : nullptr);
      for (int column = 0; column < 3; ++column)
        ASSERT_EQ(grid->At(row)->GetItem(column)->FormatItem().ToUtf8(), model.Cell(row, column))
            << row << "," << column;
    }
    ASSERT_EQ(grid->GetPrepareRow(), model.Listed() == 0 ? nullptr : grid->At(model.Listed() - 1));
    ASSERT_EQ(grid->GetCurSelItemID(),
              model.row < 0 ? CBCGPGridItemID() : CBCGPGridItemID(model.row, model.column));
    ASSERT_EQ(Editor() != nullptr, model.editor.has_value());
    if (!model.editor) return;
    ASSERT_EQ(TextOf(*Editor()).ToUtf8(), *model.editor);
  }
  static int Scripts() {
    const char* wanted = std::getenv("LORV_TEST_SCRIPTS");
    return wanted == nullptr ? 25 : std::atoi(wanted);
  }

  std::mt19937 random;
  PlainTable model;
};

}  // namespace

TEST_F(RandomAutoRow, FollowsAPlainModel) {
  for (int script = 0; script < Scripts(); ++script) {
    random.seed(static_cast<unsigned>(script));
    MakeGrid(3);
    model = {};
    model.Switch(true);
    grid->SetAutoAddRow(true);
    for (int step = 0; step < 60; ++step) {
      Step();
      Compare();
      if (HasFatalFailure()) FAIL() << "script " << script << ", step " << step;
    }
  }
}

// Handlers of rows that come and go, of selections, values and editors remove rows, empty the table, switch
// the prepare row, or end the grid. Nothing may be touched that is gone.
TEST_F(RandomAutoRow, StandsHandlersThatPullTheTableAway) {
  for (int script = 0; script < Scripts(); ++script) {
    random.seed(static_cast<unsigned>(script) + 70000);
    MakeGrid(3);
    int depth = 0;
    grid->on = [&](const std::string&) {
      if (depth >= 2 || Number(4) != 0) return;
      ++depth;
      switch (Number(9)) {
        case 0:
          grid->RemoveRow(Number(4), TRUE);
          break;
        case 1:
          grid->RemoveAll();
          break;
        case 2:
          grid->ReDim(Number(4), 1 + Number(3));
          break;
        case 3:
          grid->SetAutoAddRow(Number(2) == 0);
          break;
        case 4:
          grid->EndEditItem(Number(2) == 0 ? TRUE : FALSE);
          break;
        case 5:
          grid->AddRow(TRUE);
          break;
        case 6:
          if (grid->Listed() > 0) delete grid->At(Number(grid->Listed()));
          break;
        case 7:
          grid->Sort(Number(2), TRUE);
          break;
        default:
          // Rare enough that most scripts run on for a while.
          if (Number(5) == 0) grid.reset();
          break;
      }
      --depth;
    };
    grid->SetAutoAddRow(true);
    for (int step = 0; grid != nullptr && step < 60; ++step) {
      const int what = Number(8);
      if (what < 3) Type(_T("x"));
      if (what == 3) Key(VK_BACK);
      if (what == 4) Choose(Number(4), Number(3));
      if (what == 5) Key(VK_RETURN);
      if (what == 6) grid->SetValue(Number(4), 0, _variant_t(_T("v")), TRUE);
      if (what == 7) grid->ReDim(Number(4), 3);
      Run();
    }
    if (grid != nullptr) grid->on = nullptr;
  }
}
