// The loops over blocks of rows, compiled for every processor.
#define LORV_LOOPS kBaselineLoops
#define LORV_LOOPS_NAME "baseline"
#include "TEXPRESSCAL/simd/block_loops.inc"
