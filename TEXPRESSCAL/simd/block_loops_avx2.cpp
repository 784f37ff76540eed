// The loops over blocks of rows, compiled for processors with AVX2.
#define LORV_LOOPS kAvx2Loops
#define LORV_LOOPS_NAME "avx2"
#include "TEXPRESSCAL/simd/block_loops.inc"
