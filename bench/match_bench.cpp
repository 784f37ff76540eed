// Ranking stored names while someone types, beside the plain way of scoring.
#include <benchmark/benchmark.h>

#include <random>

#include "comm/AdLorvComm.h"
#include "comm/match_score.h"
#include "platform/ports/platform.h"
#include "tests/comm/plain_match.h"

namespace {

constexpr int kNames = 100'000;
constexpr int kLength = 20;
constexpr int kShown = 20;

enum Script { kLatin, kChinese };

CString Name(std::mt19937& random, int script) {
  CString name;
  for (int i = 0; i < kLength; ++i) {
    const auto drawn = random();
    name += static_cast<TCHAR>(script == kChinese ? 0x4E00 + drawn % 3000 : 'a' + drawn % 26);
  }
  return name;
}

CStringArray Stored(int script) {
  std::mt19937 random(42);
  CStringArray stored;
  for (int i = 0; i < kNames; ++i) stored.Add(Name(random, script));
  return stored;
}

// What is typed: half of a stored name, and letters that are in none.
CString Typed(const CStringArray& stored) {
  return stored[kNames / 2].Mid(4, kLength / 2) + stored[7].Left(kLength / 2);
}

// One key press: all names scored and the best shown. To stay under 0.2 s.
void RankNames(benchmark::State& state) {
  const CStringArray stored = Stored(static_cast<int>(state.range(0)));
  const CString typed = Typed(stored);
  const int sum_mode = static_cast<int>(state.range(1));
  for (auto _ : state) benchmark::DoNotOptimize(lorv::RankMatches(typed, stored, sum_mode, kShown));
  state.SetItemsProcessed(state.iterations() * kNames);
}

void ScoreNamesPlainly(benchmark::State& state) {
  const CStringArray stored = Stored(static_cast<int>(state.range(0)));
  const lorv::CodePage& page = *lorv::PortsInForce().code_page;
  const std::string typed = page.ToNarrow(Typed(stored).View());
  const bool sum_mode = state.range(1) != 0;
  for (auto _ : state) {
    int best = 0;
    for (const CString& name : stored) {
      best = std::max(best, lorv::test::PlainMatch(typed, page.ToNarrow(name.View()), sum_mode));
    }
    benchmark::DoNotOptimize(best);
  }
  state.SetItemsProcessed(state.iterations() * kNames);
}

BENCHMARK(RankNames)->ArgsProduct({{kLatin, kChinese}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(ScoreNamesPlainly)->ArgsProduct({{kLatin, kChinese}, {0, 1}})->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
