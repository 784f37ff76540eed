// The loops over blocks of rows, compiled for processors with AVX-512.
#define LORV_LOOPS kAvx512Loops
#define LORV_LOOPS_NAME "avx512"
#include "TEXPRESSCAL/simd/block_loops.inc"
