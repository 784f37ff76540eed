#define LORV_LOOPS kBaselineLoops
#define LORV_LOOPS_NAME "baseline"
#include "TEXPRESSCAL/block_loops.inc"
