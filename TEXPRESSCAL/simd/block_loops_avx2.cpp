#define LORV_LOOPS kAvx2Loops
#define LORV_LOOPS_NAME "avx2"
#include "TEXPRESSCAL/simd/block_loops.inc"
