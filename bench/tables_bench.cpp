// Tables of a million tagged cells beside plain rows of standard variants: set, get, find.
#include <benchmark/benchmark.h>

#include <string>
#include <variant>
#include <vector>

#include "tables/xarray_db.h"

namespace {

// The least a program of its own would use for such a cell.
using PlainCell = std::variant<std::monostate, int, double, std::basic_string<TCHAR>>;
using PlainTable = std::vector<std::vector<PlainCell>>;

constexpr int kRows = 10000;
constexpr int kColumns = 100;
constexpr int kCells = kRows * kColumns;
// One column as long as all cells together: a search compares as many as the others set and get.
constexpr int kFindRows = kCells;

template <class Work>
void ForEachCell(Work work) {
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) work(row, column);
  }
}

void SetCells(benchmark::State& state) {
  CXArrayDBToArray table;
  table.ReDim(kRows, kColumns);
  for (auto _ : state) {
    ForEachCell([&](int row, int column) { table.SetValue(row, column, _variant_t(0.5 * row)); });
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

void SetCellsPlain(benchmark::State& state) {
  PlainTable table(kRows, std::vector<PlainCell>(kColumns));
  for (auto _ : state) {
    ForEachCell([&](int row, int column) {
      table[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = 0.5 * row;
    });
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

void GetCells(benchmark::State& state) {
  CXArrayDBToArray table;
  table.ReDim(kRows, kColumns);
  ForEachCell([&](int row, int column) { table.SetValue(row, column, _variant_t(0.5 * column)); });
  for (auto _ : state) {
    double sum = 0;
    ForEachCell([&](int row, int column) { sum += table.GetValue(row, column).dblVal; });
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

void GetCellsPlain(benchmark::State& state) {
  PlainTable table(kRows, std::vector<PlainCell>(kColumns, 0.5));
  for (auto _ : state) {
    double sum = 0;
    ForEachCell([&](int row, int column) {
      sum += std::get<double>(table[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]);
    });
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

CString NameOf(int row) {
  CString name;
  name.Format(_T("KL%d"), row);
  return name;
}

// The last row of the column, so that every cell is compared.
void FindCell(benchmark::State& state) {
  CXArrayDBToArray table;
  table.ReDim(kFindRows, 1);
  for (int row = 0; row < kFindRows; ++row) table.SetValue(row, 0, _variant_t(NameOf(row)));
  const _variant_t wanted(NameOf(kFindRows - 1));
  for (auto _ : state) benchmark::DoNotOptimize(table.FindVal(0, wanted));
  state.SetItemsProcessed(state.iterations() * kFindRows);
}

void FindCellPlain(benchmark::State& state) {
  PlainTable table(kFindRows, std::vector<PlainCell>(1));
  for (int row = 0; row < kFindRows; ++row) {
    table[static_cast<std::size_t>(row)][0] = std::basic_string<TCHAR>(NameOf(row).View());
  }
  const PlainCell wanted = table.back()[0];
  for (auto _ : state) {
    std::size_t row = 0;
    while (row < table.size() && table[row][0] != wanted) ++row;
    benchmark::DoNotOptimize(row);
  }
  state.SetItemsProcessed(state.iterations() * kFindRows);
}

BENCHMARK(SetCells);
BENCHMARK(SetCellsPlain);
BENCHMARK(GetCells);
BENCHMARK(GetCellsPlain);
BENCHMARK(FindCell);
BENCHMARK(FindCellPlain);

}  // namespace

BENCHMARK_MAIN();
