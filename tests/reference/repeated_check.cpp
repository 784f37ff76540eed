// Evaluates very many repeated cases, each from a seed of its own, and ends at the first one that differs:
//
//   lorv_check_repeated [CASES] [FIRST_SEED]      (a hundred thousand from 1 on)

#include <cstdio>
#include <cstdlib>

#include "tests/reference/repeated_case.h"

int main(int argc, char** argv) {
  using namespace lorv::test;
  const std::uint64_t cases = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 100000;
  const std::uint64_t first = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
  std::uint64_t rounds = 0;
  std::uint64_t rows = 0;
  for (std::uint64_t seed = first; seed < first + cases; ++seed) {
    ChoiceSource source(seed);
    const RepeatedCase made = MakeRepeatedCase(source);
    rounds += made.rounds.size();
    rows += made.rows;
    if (RepeatedDifference(made).empty()) continue;
    const RepeatedCase small = Shrunk(made);
    std::printf("seed %llu\n%s\n%s\n", static_cast<unsigned long long>(seed), Shown(small).c_str(),
                RepeatedDifference(small).c_str());
    return 1;
  }
  std::printf("%llu cases from seed %llu, %llu rounds, %llu rows: all agree\n",
              static_cast<unsigned long long>(cases), static_cast<unsigned long long>(first),
              static_cast<unsigned long long>(rounds), static_cast<unsigned long long>(rows));
  return 0;
}
