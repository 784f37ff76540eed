// One formula over a million rows of values: CalculateRows with one thread and with two beside muParser's
// bulk mode on one thread. The values change from row to row as measured lengths do, in millimetres. What a
// formula cannot be faster than is shown beside: adding the same columns up, block by block.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "TEXPRESSCAL/calculate_rows.h"
#include "bench/formulas.h"
#include "bench/peer_parser.h"

namespace lorv::bench {
namespace {

constexpr std::size_t kRows = 1000000;

struct Table {
  explicit Table(const Formula& formula)
      : name(formula.name),
        text(formula.text),
        calculator(CString::FromUtf8(formula.text)),
        results(kRows),
        errors(kRows) {
    std::size_t seed = 1;
    for (const auto& [variable, value] : formula.values) {
      values.emplace_back(kRows);
      for (double& row : values.back()) {
        seed = seed * 6364136223846793005U + 1442695040888963407U;
        // As a length is typed: so many millimetres, in metres; from row to row up to a metre more.
        row = (std::round(value * 1000) + static_cast<double>(seed >> 54)) / 1000;
      }
    }
    std::size_t i = 0;
    for (const auto& [variable, value] : formula.values) {
      columns.push_back({CString::FromUtf8(variable), values[i].data()});
      peer.Column(variable, values[i++].data());
    }
  }

  void ByRows(int threads) {
    CalculateRows(calculator, columns, kRows, results.data(), errors.data(), threads);
  }
  void ByPeer() { peer.EvaluateRows(text, results.data(), kRows); }
  void BySum() {
    // About as many rows as the library's own blocks have, and a divisor of all.
    constexpr std::size_t kBlock = 250;
    static_assert(kRows % kBlock == 0);
    for (std::size_t first = 0; first < kRows; first += kBlock) {
      double* const sums = results.data() + first;
      std::copy_n(values.front().data() + first, kBlock, sums);
      for (std::size_t i = 1; i < values.size(); ++i)
        std::transform(sums, sums + kBlock, values[i].data() + first, sums, std::plus<>());
      std::fill_n(errors.data() + first, kBlock, 0);
    }
  }

  std::string name;
  std::string text;
  CAdExpCalculate calculator;
  PeerParser peer;
  std::vector<std::vector<double>> values;
  std::vector<ValueColumn> columns;
  std::vector<double> results;
  std::vector<int> errors;
};

// Which the library evaluates as the division.
bool IsNearThird(double value) {
  return std::fabs(value - 1.0 / 3) < 0.001 || std::fabs(value - 2.0 / 3) < 0.001;
}

// The comparison means something only where both give the same numbers.
bool Agree(Table& table) {
  table.ByPeer();
  const std::vector<double> expected = table.results;
  table.ByRows(1);
  std::size_t differing = 0;
  for (std::size_t i = 0; i < kRows; ++i) {
    const auto near_third = [i](const std::vector<double>& column) { return IsNearThird(column[i]); };
    if (std::any_of(table.values.begin(), table.values.end(), near_third)) continue;
    if (std::fabs(table.results[i] - expected[i]) > 1e-9 * std::fmax(1.0, std::fabs(expected[i])))
      ++differing;
  }
  // A few rows may: "<" and ">" of the library count 2.8000000000000003 and 2.8 as equal.
  if (differing * 1000 <= kRows) return true;
  std::fprintf(stderr, "%s: %zu rows differ\n", table.name.c_str(), differing);
  return false;
}

template <class Work>
void Register(const std::string& name, Work work) {
  benchmark::RegisterBenchmark(
      name.c_str(),
      [=](benchmark::State& state) {
        for (auto _ : state) work();
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRows));
      })
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
}

int Run(int argc, char** argv) {
  std::vector<std::unique_ptr<Table>> tables;
  for (const Formula& formula : TwelveFormulas()) {
    if (formula.name[0] == 'T') continue;
    tables.push_back(std::make_unique<Table>(formula));
    if (!Agree(*tables.back())) return 1;
  }
  for (const auto& table : tables) {
    Table* const at = table.get();
    Register("rows/" + at->name, [=] { at->ByRows(1); });
    Register("rows_two_threads/" + at->name, [=] { at->ByRows(2); });
    Register("peer_rows/" + at->name, [=] { at->ByPeer(); });
    Register("sum_rows/" + at->name, [=] { at->BySum(); });
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace
}  // namespace lorv::bench

int main(int argc, char** argv) {
  return lorv::bench::Run(argc, argv);
}
