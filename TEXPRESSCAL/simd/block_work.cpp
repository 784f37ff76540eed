#include "TEXPRESSCAL/simd/block_work.h"

// Chooses the loops that this processor can run. The loops are the same text compiled several times; they
// give the same bits everywhere, as the compiler may not contract products and sums and the functions are our
// own.

namespace lorv {
namespace {

// The hostile build runs the plainest loops, which no other build reaches on a newer processor.
#if defined(__x86_64__) && !defined(LORV_HOSTILE)

bool RunsAvx2() {
  return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
}
bool RunsAvx512() {
  return RunsAvx2() && __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
         __builtin_cpu_supports("avx512vl") != 0;
}

#else

bool RunsAvx2() {
  return false;
}
bool RunsAvx512() {
  return false;
}

#endif

}  // namespace

// The best first. The processor is asked each time: it is asked when a plan is made, not when one is run.
std::size_t UsableBlockLoops(const BlockLoops** loops, std::size_t room) {
  std::size_t count = 0;
  const auto add = [&](const BlockLoops& some, bool runs) {
    if (runs && count < room) loops[count++] = &some;
  };
  add(kAvx512Loops, RunsAvx512());
  add(kAvx2Loops, RunsAvx2());
  add(kBaselineLoops, true);
  return count;
}

const BlockLoops* BestBlockLoops(std::size_t saved_numbers) {
  if (saved_numbers > kMaxSavedBlocks) return nullptr;
  const BlockLoops* best = nullptr;
  UsableBlockLoops(&best, 1);
  return best;
}

}  // namespace lorv
