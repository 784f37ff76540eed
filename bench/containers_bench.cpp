// Sorted arrays beside std::map and a sorted std::vector: search and growing by insertion.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "containers/sort_array.h"
#include "containers/str_cmp.h"
#include "framework/text/cstring.h"

namespace {

using Numbers = TSortArray<int, SortCompare<int, int, __int64>, OxArray<int, OxVector<int>>>;

// Keys in a fixed random order: searches in ascending order would find their path in the cache.
std::vector<int> Shuffled(std::int64_t count) {
  std::vector<int> values(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<int>(i) * 3;
  std::shuffle(values.begin(), values.end(), std::mt19937(12345));
  return values;
}

void SearchSortArray(benchmark::State& state) {
  const std::vector<int> keys = Shuffled(state.range(0));
  std::vector<int> ascending = keys;
  std::sort(ascending.begin(), ascending.end());
  Numbers array;
  // In order, so that each is added at the end: making the array costs the square of its size else.
  for (int key : ascending) array.AddSorted(key);
  std::size_t next = 0;
  for (auto _ : state) {
    int position = 0;
    benchmark::DoNotOptimize(array.FindPosition(keys[next], position));
    // No modulo: a division would be a good part of what a search takes.
    next = next + 1 == keys.size() ? 0 : next + 1;
  }
}

void SearchMap(benchmark::State& state) {
  const std::vector<int> keys = Shuffled(state.range(0));
  std::map<int, int> map;
  for (int key : keys) map.emplace(key, key);
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(map.find(keys[next]));
    next = next + 1 == keys.size() ? 0 : next + 1;
  }
}

void SearchVector(benchmark::State& state) {
  const std::vector<int> keys = Shuffled(state.range(0));
  std::vector<int> sorted = keys;
  std::sort(sorted.begin(), sorted.end());
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::lower_bound(sorted.begin(), sorted.end(), keys[next]));
    next = next + 1 == keys.size() ? 0 : next + 1;
  }
}

// Up to ten thousand only: inserting into the middle of an array costs the square of its size.
void InsertSortArray(benchmark::State& state) {
  const std::vector<int> keys = Shuffled(state.range(0));
  for (auto _ : state) {
    Numbers array;
    for (int key : keys) array.AddSorted(key);
    benchmark::DoNotOptimize(array.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void InsertMap(benchmark::State& state) {
  const std::vector<int> keys = Shuffled(state.range(0));
  for (auto _ : state) {
    std::map<int, int> map;
    for (int key : keys) map.emplace(key, key);
    benchmark::DoNotOptimize(map.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void InsertVector(benchmark::State& state) {
  const std::vector<int> keys = Shuffled(state.range(0));
  for (auto _ : state) {
    std::vector<int> sorted;
    for (int key : keys) sorted.insert(std::lower_bound(sorted.begin(), sorted.end(), key), key);
    benchmark::DoNotOptimize(sorted.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(SearchSortArray)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(SearchMap)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(SearchVector)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(InsertSortArray)->Arg(100)->Arg(10000);
BENCHMARK(InsertMap)->Arg(100)->Arg(10000);
BENCHMARK(InsertVector)->Arg(100)->Arg(10000);

}  // namespace

BENCHMARK_MAIN();
