#define LORV_LOOPS kBaselineLoops
#define LORV_LOOPS_NAME "baseline"
#include "TEXPRESSCAL/simd/block_loops.inc"
