#include <benchmark/benchmark.h>
#include <malloc.h>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "grid/clipboard/grid_clipboard.h"
#include "grid/export/text_export.h"
#include "grid/find/grid_find.h"
#include "platform/headless/desktop/headless_desktop.h"

// Tables of any length that cost the same: a character typed into the row below the last one, and pages of a
// virtual table. All in memory, so that the grid's own work is what counts.

namespace {

class Stage {
 public:
  Stage() { top.Create(nullptr, _T(""), WS_POPUP | WS_VISIBLE, CRect(0, 0, 600, 500), nullptr, 0); }
  lorv::HeadlessDesktop desktop;
  lorv::ScopedDesktop scope{desktop};
  CWnd top;
};

// A character and its deletion: a row comes and goes.
void TypeInPrepareRow(benchmark::State& state) {
  Stage stage;
  CBcgTrueDbGridCtrlEx grid;
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 500, 400), &stage.top, 1);
  grid.InsertColumns(_T("a,b,c,d,e"), _T(""), 0);
  const int rows = static_cast<int>(state.range(0));
  for (int row = 0; row < rows; ++row) {
    grid.AddRow(FALSE);
    grid.SetValue(row, 0, _variant_t(row), FALSE);
  }
  grid.AdjustLayout();
  grid.SetAutoAddRow(true);
  grid.SetCurSel(CBCGPGridItemID(rows, 1));
  grid.SetFocus();
  // Once before the time begins: what the first key makes is there then.
  stage.desktop.Type(_T("x"));
  stage.desktop.Press(VK_BACK);
  stage.desktop.RunUntilIdle();
  for (auto _ : state) {
    stage.desktop.Type(_T("x"));
    stage.desktop.RunUntilIdle();
    stage.desktop.Press(VK_BACK);
    stage.desktop.RunUntilIdle();
  }
  // A row that stayed would make the table longer with every round.
  if (grid.GetRowCount() != rows) state.SkipWithError("the table is another one");
}

void MakeVirtual(Stage& stage, CBCGPBasicGridCtrl& grid, int rows) {
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 500, 400), &stage.top, 1);
  grid.InsertColumns(_T("a,b,c,d,e"), _T(""), 0);
  grid.EnableVirtualMode([](CBCGPGridRow& row, int index) {
    for (int column = 0; column < row.GetItemCount(); ++column)
      row.GetItem(column)->SetValue(_variant_t(index), FALSE);
  });
  grid.SetVirtualRows(rows);
  stage.desktop.RunUntilIdle();
}

// What is done to the last kWalked rows, and what the grid holds afterwards beyond an empty one.
constexpr int kWalked = 10000;

template <class Walk>
void WalkVirtualTable(benchmark::State& state, Walk walk) {
  Stage stage;
  const auto before = mallinfo2().uordblks;
  CBCGPBasicGridCtrl grid;
  const int rows = static_cast<int>(state.range(0));
  MakeVirtual(stage, grid, rows);
  for (auto _ : state)
    if (!walk(grid, rows - kWalked)) state.SkipWithError("it gave nothing");
  state.counters["MB"] = static_cast<double>(mallinfo2().uordblks - before) / (1 << 20U);
}

// The text stands in the last row alone.
void FindInVirtualTable(benchmark::State& state) {
  WalkVirtualTable(state, [](CBCGPBasicGridCtrl& grid, int from) {
    lorv::GridFind find(grid);
    lorv::FindOptions options;
    options.text.Format(_T("%d"), from + kWalked - 1);
    find.SetOptions(options);
    return !find.FindFrom({from, 0}, false).IsNull();
  });
}

void CopyOfVirtualTable(benchmark::State& state) {
  WalkVirtualTable(state, [](CBCGPBasicGridCtrl& grid, int from) {
    grid.SelectRange({0, from, 4, from + kWalked - 1});
    const bool copied = lorv::GridClipboard(grid).Copy();
    // Its text is the clipboard's, not the grid's.
    lorv::DesktopInForce().SetClipboardText(_T(""));
    return copied;
  });
}

// All of its rows.
void ExportOfVirtualTable(benchmark::State& state) {
  WalkVirtualTable(state, [](CBCGPBasicGridCtrl& grid, int) {
    std::size_t bytes = 0;
    return lorv::ExportText(grid, {}, [&](std::string_view piece) { return (bytes += piece.size()) > 0; });
  });
}

void PageOfVirtualTable(benchmark::State& state) {
  Stage stage;
  CBCGPBasicGridCtrl grid;
  const int rows = static_cast<int>(state.range(0));
  MakeVirtual(stage, grid, rows);
  unsigned at = 1;
  for (auto _ : state) {
    // Anywhere in the table: a page near the one before would find its rows still made.
    at = at * 1664525U + 1013904223U;
    grid.EnsureVisible(grid.GetVirtualRow(static_cast<int>(at % static_cast<unsigned>(rows))));
    stage.desktop.RunUntilIdle();
  }
}

}  // namespace

BENCHMARK(TypeInPrepareRow)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(PageOfVirtualTable)->Arg(100)->Arg(100000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(FindInVirtualTable)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyOfVirtualTable)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ExportOfVirtualTable)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
