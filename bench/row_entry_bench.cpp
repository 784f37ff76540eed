#include <benchmark/benchmark.h>

#include "grid/CBcgTrueDbGridCtrl.h"
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
  stage.desktop.Type(_T("x"));
  stage.desktop.Press(VK_BACK);
  stage.desktop.RunUntilIdle();
  for (auto _ : state) {
    stage.desktop.Type(_T("x"));
    stage.desktop.RunUntilIdle();
    stage.desktop.Press(VK_BACK);
    stage.desktop.RunUntilIdle();
  }
  if (grid.GetRowCount() != rows) state.SkipWithError("the table is another one");
}

void PageOfVirtualTable(benchmark::State& state) {
  Stage stage;
  CBCGPBasicGridCtrl grid;
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 500, 400), &stage.top, 1);
  grid.InsertColumns(_T("a,b,c,d,e"), _T(""), 0);
  grid.EnableVirtualMode([](CBCGPGridRow& row, int index) {
    for (int column = 0; column < row.GetItemCount(); ++column)
      row.GetItem(column)->SetValue(_variant_t(index), FALSE);
  });
  const int rows = static_cast<int>(state.range(0));
  grid.SetVirtualRows(rows);
  stage.desktop.RunUntilIdle();
  unsigned at = 1;
  for (auto _ : state) {
    at = at * 1664525U + 1013904223U;
    grid.EnsureVisible(grid.GetVirtualRow(static_cast<int>(at % static_cast<unsigned>(rows))));
    stage.desktop.RunUntilIdle();
  }
}

}  // namespace

BENCHMARK(TypeInPrepareRow)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(PageOfVirtualTable)->Arg(100)->Arg(100000)->Arg(10000000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
