#define LORV_LOOPS kAvx2Loops
#define LORV_LOOPS_NAME "avx2"
#include "TEXPRESSCAL/block_loops.inc"
