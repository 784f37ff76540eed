// Splitting a line of a table into its cells, beside a plain loop over std::basic_string.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "comm/AdLorvComm.h"

namespace {

CString Line(std::int64_t cells) {
  CString line;
  for (std::int64_t i = 0; i < cells; ++i) line.AppendFormat(_T("KL%d 框架梁;"), static_cast<int>(i));
  return line;
}

void SplitAtCharacter(benchmark::State& state) {
  const CString line = Line(state.range(0));
  CStringArray pieces;
  for (auto _ : state) benchmark::DoNotOptimize(CAdLorvComm::ParseStringToArray(line, pieces, _T(';')));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The pieces are kept as texts on both sides: views would leave out what the library's callers need.
void SplitAtCharacterPlain(benchmark::State& state) {
  const CString line = Line(state.range(0));
  std::vector<std::basic_string<TCHAR>> pieces;
  for (auto _ : state) {
    pieces.clear();
    const lorv::TextView text = line.View();
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = std::min(text.find(_T(';'), at), text.size());
      pieces.emplace_back(text.substr(at, end - at));
      at = end + 1;
    }
    benchmark::DoNotOptimize(pieces.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SplitAtText(benchmark::State& state) {
  CString line = Line(state.range(0));
  line.Replace(_T(";"), _T("::"));
  for (auto _ : state) {
    CStringArray pieces;
    benchmark::DoNotOptimize(CAdLorvComm::DivideString(line, _T("::"), pieces));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(SplitAtCharacter)->Arg(8)->Arg(1000);
BENCHMARK(SplitAtCharacterPlain)->Arg(8)->Arg(1000);
BENCHMARK(SplitAtText)->Arg(8)->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
