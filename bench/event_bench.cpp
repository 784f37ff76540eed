// An event of a table to the handler of its parent and back, beside a call of a standard function object:
// what the bridge of numbers and typed arguments costs.
#include <benchmark/benchmark.h>

#include <functional>

#include "framework/windows/event_sink.h"
#include "grid/CBcgTrueDbGridCtrl.h"
#include "platform/headless/desktop/headless_desktop.h"

namespace {

constexpr UINT kTable = 7;

class Sheet : public CWnd {
 public:
  int heard = 0;
  DECLARE_EVENTSINK_MAP()

 private:
  void OnFilter() { ++heard; }
  void OnCombo(short column) { heard += column + 1; }
};

BEGIN_EVENTSINK_MAP(Sheet, CWnd)
ON_EVENT(Sheet, kTable, 34, OnCombo, VTS_I2)
ON_EVENT(Sheet, kTable, 75, OnFilter, VTS_NONE)
END_EVENTSINK_MAP()

// A dialog with a table, of which a cell is current.
struct Scene {
  lorv::HeadlessDesktop desktop;
  lorv::ScopedDesktop scope{desktop};
  Sheet sheet;
  CBcgTrueDbGridCtrl grid;

  Scene() {
    sheet.Create(nullptr, _T("sheet"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 500, 400), nullptr, 0);
    grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &sheet, kTable);
    grid.ReDim(4, 3);
    desktop.RunUntilIdle();
    sheet.heard = 0;
  }
};

void EventWithoutArguments(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) scene.grid.OnFilterBarChanged();
  // An event that reaches nobody would be quick.
  if (scene.sheet.heard == 0) state.SkipWithError("no event was heard");
}

void EventWithAColumn(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) scene.grid.OnComboItemSelect();
  if (scene.sheet.heard == 0) state.SkipWithError("no event was heard");
}

void FunctionObject(benchmark::State& state) {
  int heard = 0;
  std::function<void(short)> handler = [&heard](short column) { heard += column + 1; };
  // Else the compiler sees what is called, and no call is left.
  benchmark::DoNotOptimize(handler);
  short column = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(column);
    handler(column);
  }
  benchmark::DoNotOptimize(heard);
}

}  // namespace

BENCHMARK(EventWithoutArguments);
BENCHMARK(EventWithAColumn);
BENCHMARK(FunctionObject);

BENCHMARK_MAIN();
