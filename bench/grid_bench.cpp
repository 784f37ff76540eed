#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bench/editor_keys.h"
#include "bench/grid_peer.h"
#include "bench/grid_steps.h"
#include "bench/plain_painter.h"
#include "framework/windows/window.h"
#include "grid/basic/basic_grid.h"
#include "grid/find/grid_find.h"
#include "grid/view/grid_sort.h"
#include "platform/choice/desktop_choice.h"
#include "platform/headless/desktop/headless_desktop.h"

// A grid of a million cells beside the tables of the system's toolkit, in one process and in random turns. Of
// each work the best of several turns counts: what the neighbours of the machine do only ever adds.
//
//   lorv_bench_grid [--quick] [--scale N] [--alone]      alone: without the toolkit's tables, for a profiler
//   lorv_bench_grid --steps                              the clipboard, a sort and undo alone
//   lorv_bench_grid --editors                            editors alone
//   lorv_bench_grid --order                              searches, sorts, filters and moved columns alone

namespace {

using lorv_bench::GridPeer;
using lorv_bench::Table;
using Work = std::function<void()>;

// Of the processor's time, so that what else a machine does counts for nothing.
double Milliseconds(const Work& work) {
  const std::clock_t start = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void Settle() {
  while (lorv::DesktopInForce().Pump(false)) {
  }
}

// The library's side of the same work.
class OurGrid : public GridPeer {
 public:
  explicit OurGrid(const Table& table) : table_(table) {
    grid_.Create(WS_POPUP | WS_VISIBLE, CRect(0, 0, table.Width(), table.Height()), nullptr, 1);
    for (int column = 0; column < table.columns; ++column)
      grid_.InsertColumn(column, _T("c"), table.column_width, -1, FALSE);
    grid_.SetRowHeight(table.row_height);
    grid_.SetRowHeight();
    grid_.AdjustLayout();
    Settle();
  }

  std::string Name() const override { return "library"; }
  void Fill() override {
    for (int row = 0; row < table_.rows; ++row) {
      grid_.AddRow(FALSE);
      for (int column = 0; column < table_.columns; ++column)
        grid_.SetValue(row, column, ValueOf(row, column, 0), FALSE);
    }
    grid_.AdjustLayout();
    Settle();
  }
  void SetAgain(int turn) override {
    CBCGPBasicGridCtrl& grid = grid_;
    for (int row = 0; row < table_.rows; ++row)
      for (int column = 0; column < table_.columns; ++column)
        grid.SetValue(row, column, ValueOf(row, column, turn), TRUE);
  }
  void Layout() { grid_.AdjustLayout(); }
  void InsertRow(int row) override { grid_.InsertRowBefore(row, grid_.CreateRow(table_.columns), FALSE); }
  void FitColumn(int column) override { grid_.OnHeaderDividerDblClick(column); }
  void ScrollTo(int row) override {
    grid_.ScrollTo(0, row * table_.row_height);
    grid_.UpdateWindow();
    Settle();
  }
  void Repaint() {
    grid_.Invalidate(FALSE);
    grid_.UpdateWindow();
  }
  void Activate() override {
    lorv_bench::BringForward(grid_.m_hWnd);
    Settle();
    grid_.SetFocus();
    Settle();
  }
  void OpenEditor(int row, int column) override {
    grid_.SetCurSel({row, column});
    lorv_bench::Press(lorv_bench::Key::F2);
    Settle();
  }
  void TypeDigit(int digit) override {
    lorv_bench::Press(lorv_bench::Key::Digit, digit);
    Settle();
  }
  void CloseEditor() override {
    lorv_bench::Press(lorv_bench::Key::Return);
    Settle();
  }
  std::u16string TextAt(int row, int column) override {
    const CString text(grid_.GetItem(row, column)->FormatItem());
    return {text.GetString(), text.GetString() + text.GetLength()};
  }
  void Sort(int column, bool ascending) override {
    const lorv::GridSort sort(grid_);
    grid_.Sort(column, ascending ? TRUE : FALSE);
  }
  int Filter(int column, const char16_t* text) override {
    grid_.EnableFilterBar();
    grid_.SetFilterBarText(column, reinterpret_cast<LPCTSTR>(text));
    int shown = 0;
    for (int row = 0; row < grid_.CBCGPGridCtrl::GetRowCount(); ++row) shown += grid_.IsRowShown(row) ? 1 : 0;
    return shown;
  }
  int CountCells(const char16_t* text) override {
    lorv::GridFind find(grid_);
    lorv::FindOptions options;
    options.text = reinterpret_cast<LPCTSTR>(text);
    // The toolkit's searches know nothing of hidden rows.
    options.hidden_cells = true;
    find.SetOptions(options);
    return find.Count();
  }
  int CountMatches(int column, const char16_t* pattern) override {
    grid_.SelectColumn(column, FALSE);
    lorv::GridFind find(grid_);
    lorv::FindOptions options;
    options.text = reinterpret_cast<LPCTSTR>(pattern);
    options.pattern = true;
    options.match_case = true;
    options.selection_only = true;
    options.hidden_cells = true;
    find.SetOptions(options);
    return find.Count();
  }
  void MoveColumn(int from, int to) override {
    grid_.MoveColumn(from, to);
    grid_.UpdateWindow();
    Settle();
  }

 private:
  class Grid : public CBCGPBasicGridCtrl {
   public:
    using CBCGPBasicGridCtrl::OnHeaderDividerDblClick;
    using CBCGPBasicGridCtrl::ScrollTo;

   protected:
    // Return stays in the cell, as it does in the toolkit's tables.
    int OnGridKeybordNavigation(CBCGPGridItem* /*item*/, DWORD /*reason*/) override { return 0; }
  };

  static _variant_t ValueOf(int row, int column, int turn) {
    char16_t text[24];
    text[lorv_bench::WriteCellText(text, row, column, turn)] = 0;
    return _variant_t(reinterpret_cast<LPCTSTR>(text));
  }

  const Table& table_;
  Grid grid_;
};

struct Step {
  const char* name;
  int rounds;
  double goal;  // times as fast as the quickest peer it should be; 0: none set
  std::function<void(GridPeer&, int round)> work;
};

std::vector<Step> StepsOf(const Table& table, bool quick) {
  const int many = quick ? 2 : 40;
  const int few = quick ? 1 : 5;
  const int middle = table.rows / 2;
  return {
      {"set all cells again", few, 1, [](GridPeer& peer, int round) { peer.SetAgain(round + 1); }},
      {"best fit of a column of numbers", few, 4, [](GridPeer& peer, int) { peer.FitColumn(1); }},
      {"best fit of a column of names", few, 4, [](GridPeer& peer, int) { peer.FitColumn(4); }},
      {"a page, scrolled and painted", many, 1.5,
       [=](GridPeer& peer, int round) { peer.ScrollTo(middle + round % 20 * 30); }},
      {"a row, scrolled and painted", many, 0,
       [=](GridPeer& peer, int round) { peer.ScrollTo(middle + 100 + round); }},
      {"100 rows put into the middle", many / 2, 0,
       [=](GridPeer& peer, int round) {
         for (int i = 0; i < 100; ++i) peer.InsertRow(middle + round + i);
       }},
  };
}

// In rows that are in sight: the first rounds scroll to them.
std::vector<Step> StepsOfEditors(int first, int rounds) {
  constexpr int kRows = 3;
  return {
      {"an editor, opened and closed", rounds, 2,
       [=](GridPeer& peer, int round) {
         peer.OpenEditor(first + round % kRows, 1);
         peer.CloseEditor();
       }},
      {"an editor, opened, a digit typed, closed", rounds, 2,
       [=](GridPeer& peer, int round) {
         peer.OpenEditor(first + round % kRows, 1);
         peer.TypeDigit(round % 10);  // another one than the cell has from three rounds before
         peer.CloseEditor();
       }},
  };
}

constexpr const char16_t* kSoughtInCells = u"7.77";
constexpr const char16_t* kSoughtInNames = u"k00";  // a tenth of them, and all of a quick run
constexpr const char16_t* kPattern = u"K\\d*7[0-4]\\d$";

// What changes which rows stand where, and is therefore measured last.
std::vector<Step> StepsOfOrder(bool quick) {
  const int few = quick ? 1 : 5;
  return {
      {"cells that hold a text, counted", few, 1,
       [](GridPeer& peer, int) { peer.CountCells(kSoughtInCells); }},
      {"names that a pattern matches, counted", few, 1,
       [](GridPeer& peer, int) { peer.CountMatches(0, kPattern); }},
      {"a column moved to another place and back", few, 0,
       [](GridPeer& peer, int) { peer.MoveColumn(1, 8), peer.MoveColumn(8, 1); }},
      {"sorted by names", few, 1, [](GridPeer& peer, int round) { peer.Sort(0, round % 2 != 0); }},
      {"sorted by numbers", few, 1, [](GridPeer& peer, int round) { peer.Sort(1, round % 2 != 0); }},
      {"rows filtered by a text", few, 1,
       [](GridPeer& peer, int round) { peer.Filter(0, round % 2 == 0 ? kSoughtInNames : u"9"); }},
  };
}

// All sides find the same.
bool AgreeOnTexts(const std::vector<GridPeer*>& sides) {
  const int cells = sides.front()->CountCells(kSoughtInCells);
  const int rows = sides.front()->Filter(0, kSoughtInNames);
  const int matches = sides.front()->CountMatches(0, kPattern);
  bool agreed = rows > 0 && cells > 0 && matches > 0;
  for (GridPeer* side : sides) {
    agreed = agreed && side->CountCells(kSoughtInCells) == cells && side->Filter(0, kSoughtInNames) == rows;
    side->Filter(0, u"");
    // A moved column takes its texts along.
    side->MoveColumn(0, 3);
    agreed = agreed && side->CountMatches(side->ColumnAt(3), kPattern) == matches;
    side->MoveColumn(3, 0);
    agreed = agreed && side->CountMatches(0, kPattern) == matches;
    agreed = agreed && side->CountCells(kSoughtInCells) == cells;
  }
  return agreed;
}

void PrintRow(const char* name, const std::vector<double>& best, double goal) {
  std::printf("| %s |", name);
  for (const double time : best) std::printf(" %.3f |", time);
  if (best.size() > 1) {
    const double times = *std::min_element(best.begin() + 1, best.end()) / best.front();
    std::printf(" %.2f |", times);
    goal > 0 ? std::printf(" %.1f |", goal) : std::printf(" |");
  }
  std::printf("\n");
  std::fflush(stdout);
}

void Compare(const Step& step, const std::vector<GridPeer*>& sides) {
  std::mt19937 random(1);
  std::vector<std::vector<double>> times(sides.size());
  for (int round = 0; round < step.rounds; ++round) {
    // In another order each round, so that none always finds the caches as the same one left them.
    std::vector<std::size_t> order(sides.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::shuffle(order.begin(), order.end(), random);
    for (const std::size_t side : order) {
      sides[side]->Activate();
      times[side].push_back(Milliseconds([&] { step.work(*sides[side], round); }));
    }
  }
  std::vector<double> best;
  for (const auto& of_side : times) best.push_back(*std::min_element(of_side.begin(), of_side.end()));
  PrintRow(step.name, best, step.goal);
}

// False if a side's editor is not what a user gets.
bool CompareEditors(const char* where, int row, bool quick, const std::vector<GridPeer*>& sides) {
  bool work = true;
  for (const Step& step : StepsOfEditors(row, quick ? 4 : 60)) {
    const std::string name = std::string(step.name) + where;
    Compare({name.c_str(), step.rounds, step.goal, step.work}, sides);
  }
  for (GridPeer* side : sides) work = lorv_bench::EditorWorks(*side, 1, 1) && work;
  return work;
}

// The toolkit paints all cells in sight again when the focus goes to an editor and comes back. In a window of
// few cells that counts for little, and the editors themselves stand beside each other.
bool CompareEditorsInSmall(bool quick, bool alone) {
  Table table;
  table.rows = 100;
  table.columns = 2;
  table.shown_rows = 3;
  OurGrid ours(table);
  const auto peers = alone ? std::vector<std::unique_ptr<GridPeer>>() : lorv_bench::MakeGridPeers(table);
  std::vector<GridPeer*> sides = {&ours};
  for (const auto& peer : peers) sides.push_back(peer.get());
  for (GridPeer* side : sides) side->Fill();
  return CompareEditors(", 3 x 2 cells in sight", table.rows / 2, quick, sides);
}

std::size_t BytesOfTexts(const Table& table) {
  char16_t text[24];
  std::size_t bytes = 0;
  for (int row = 0; row < table.rows; ++row)
    for (int column = 0; column < table.columns; ++column)
      bytes += 2 * static_cast<std::size_t>(lorv_bench::WriteCellText(text, row, column, 0));
  return bytes;
}

void CompareFilling(const Table& table, const std::vector<GridPeer*>& sides) {
  std::vector<double> times;
  std::vector<double> megabytes;
  std::vector<double> bytes_a_cell;
  const auto texts = static_cast<double>(BytesOfTexts(table));
  for (GridPeer* side : sides) {
    const std::size_t before = lorv_bench::HeapInUse();
    times.push_back(Milliseconds([&] { side->Fill(); }));
    const auto taken = static_cast<double>(lorv_bench::HeapInUse() - before);
    megabytes.push_back(taken / 1e6);
    bytes_a_cell.push_back((taken - texts) / table.rows / table.columns);
  }
  PrintRow("fill", times, 4);
  PrintRow("MB of it", megabytes, 0);
  PrintRow("bytes a cell above the texts' own", bytes_a_cell, 0);
}

// How the cost of a page goes with the number of rows; narrow rows, so that ten million cells need not stand.
void Curve(const std::vector<int>& counts, int rounds) {
  std::printf("\n| Rows | page, ms | row, ms | layout, ms |\n|--:|--:|--:|--:|\n");
  for (const int count : counts) {
    Table table;
    table.columns = 3;
    table.rows = count;
    OurGrid grid(table);
    grid.Fill();
    std::vector<double> pages;
    std::vector<double> rows;
    std::vector<double> layouts;
    const int room = count - table.shown_rows;
    for (int round = 0; round < rounds; ++round) {
      // By a prime, far from the page before: neighbours would find their rows in the cache.
      const int page = static_cast<int>((round + 1) * 7919LL * table.shown_rows % std::max(1, room));
      pages.push_back(Milliseconds([&] { grid.ScrollTo(page); }));
      rows.push_back(Milliseconds([&] { grid.ScrollTo(page + 1); }));
    }
    for (int round = 0; round < 3; ++round) layouts.push_back(Milliseconds([&] { grid.Layout(); }));
    std::printf("| %d | %.3f | %.3f | %.3f |\n", count, *std::min_element(pages.begin(), pages.end()),
                *std::min_element(rows.begin(), rows.end()),
                *std::min_element(layouts.begin(), layouts.end()));
    std::fflush(stdout);
  }
}

// The corner of a selection dragged down to the last row, the values beside a vector of them.
class FilledGrid : public CBCGPBasicGridCtrl {
 public:
  FilledGrid(int rows, int columns) : rows_(rows), columns_(columns) {
    Create(WS_POPUP | WS_VISIBLE, CRect(0, 0, 800, 600), nullptr, 1);
    for (int column = 0; column < columns; ++column) InsertColumn(column, _T("c"), 80, -1, FALSE);
    for (int row = 0; row < rows; ++row) {
      CBCGPBasicGridCtrl::AddRow(FALSE);
      for (int column = 0; column < columns; ++column) {
        char16_t text[24];
        text[lorv_bench::WriteCellText(text, row, column, 0)] = 0;
        SetValue(row, column, _variant_t(reinterpret_cast<LPCTSTR>(text)), FALSE);
      }
    }
    AdjustLayout();
    SetDragCopyFill(true);
  }

  // Everything but the release of the button.
  void Pull(int source_rows) {
    EndEditItem(FALSE);
    ScrollTo(0, 0);
    SelectRange({0, 0, columns_ - 1, source_rows - 1});
    const CRect border = GetSelectionBorder();
    SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(border.right - 1, border.bottom - 1));
    EnsureVisible(GetRow(rows_ - 1), FALSE);
    SendMessage(WM_MOUSEMOVE, MK_LBUTTON, At());
  }
  void Release() { SendMessage(WM_LBUTTONUP, 0, At()); }
  bool IsFilled(int source_rows) const {
    const int last = rows_ - 1;
    return GetValue(last, 0) == GetValue(last % source_rows, 0) &&
           GetSelection().front() == CBCGPGridRange(0, 0, columns_ - 1, last);
  }

 private:
  LPARAM At() const {
    const CPoint cell = GetItemRect({rows_ - 1, 1}).CenterPoint();
    return MAKELPARAM(cell.x, cell.y);
  }

  int rows_;
  int columns_;
};

bool FillByCorner(int rows, int columns, int rounds) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  FilledGrid grid(rows, columns);
  std::vector<_variant_t> plain;
  for (int row = 0; row < rows; ++row)
    for (int column = 0; column < columns; ++column) plain.push_back(grid.GetValue(row, column));
  constexpr int kSource = 7;
  std::vector<double> ours;
  std::vector<double> loops;
  for (int round = 0; round < rounds; ++round) {
    grid.Pull(kSource);
    ours.push_back(Milliseconds([&] { grid.Release(); }));
    loops.push_back(Milliseconds([&] {
      const auto width = static_cast<std::size_t>(columns);
      for (std::size_t at = kSource * width; at < plain.size(); ++at)
        plain[at] = plain[at % (kSource * width)];
    }));
  }
  std::printf("\n%d x %d cells filled by the corner: %.1f ms, a vector of values %.1f ms\n", rows, columns,
              *std::min_element(ours.begin(), ours.end()), *std::min_element(loops.begin(), loops.end()));
  return grid.IsFilled(kSource);
}

void InMemory(int rounds) {
  Table table;
  table.rows = 10000;
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  OurGrid grid(table);
  grid.Fill();
  std::vector<double> pages;
  for (int round = 0; round < rounds; ++round)
    pages.push_back(Milliseconds([&] { grid.ScrollTo(1000 + 30 * round); }));
  std::printf("\nA page in memory: %.3f ms\n", *std::min_element(pages.begin(), pages.end()));
}

}  // namespace

int main(int count, char** arguments) {
  bool quick = false;
  bool alone = false;
  bool order = false;
  bool editors = false;
  int scale = 1;
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(arguments[i], "--quick") == 0) quick = true;
    if (std::strcmp(arguments[i], "--alone") == 0) alone = true;
    if (std::strcmp(arguments[i], "--order") == 0) order = true;
    if (std::strcmp(arguments[i], "--editors") == 0) editors = true;
    if (std::strcmp(arguments[i], "--steps") == 0) return lorv_bench::StepsAndClipboard(100000, 5) ? 0 : 1;
    if (std::strcmp(arguments[i], "--scale") == 0 && i + 1 < count) scale = std::atoi(arguments[++i]);
  }
  lorv_bench::PrepareScreen(scale);
  Table table;
  if (quick) table.rows = 2000;
  {
    OurGrid ours(table);
    const auto peers = alone ? std::vector<std::unique_ptr<GridPeer>>() : lorv_bench::MakeGridPeers(table);
    std::vector<GridPeer*> sides = {&ours};
    std::printf("%d x %d texts, pages of %d rows, scale %d; milliseconds\n\n| Work |", table.rows,
                table.columns, table.shown_rows, scale);
    for (const auto& peer : peers) sides.push_back(peer.get());
    for (const GridPeer* side : sides) std::printf(" %s |", side->Name().c_str());
    std::printf("%s\n|---|", peers.empty() ? "" : " times as fast | goal |");
    for (std::size_t i = 0; i < sides.size() + (peers.empty() ? 0 : 2); ++i) std::printf("--:|");
    std::printf("\n");
    CompareFilling(table, sides);
    if (!CompareEditors("", table.rows / 2, quick, sides) || !CompareEditorsInSmall(quick, alone))
      return std::puts("an editor did not do its work"), 1;
    if (editors) return 0;
    if (!order)
      for (const Step& step : StepsOf(table, quick)) Compare(step, sides);
    Compare({"layout", quick ? 1 : 9, 0, [&](GridPeer&, int) { ours.Layout(); }}, {&ours});
    for (GridPeer* side : sides) side->SetAgain(0);
    if (!AgreeOnTexts({sides.begin(), sides.end()})) return std::puts("not all found the same"), 1;
    for (const Step& step : StepsOfOrder(quick)) Compare(step, sides);
    if (order) return 0;
  }
  Curve(quick ? std::vector<int>{1000} : std::vector<int>{1000, 10000, 100000, 1000000}, quick ? 2 : 40);
  InMemory(quick ? 2 : 40);
  if (!lorv_bench::StepsAndClipboard(quick ? 1000 : 100000, quick ? 1 : 5))
    return std::puts("a step was not made"), 1;
  if (!FillByCorner(quick ? 1000 : 100000, 5, quick ? 1 : 9)) return std::puts("nothing was filled"), 1;
  return 0;
}
