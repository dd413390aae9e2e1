#pragma once

// Compiled once for each instruction set; the loader chooses one. For reference loops, which may use everything.
#if defined(__x86_64__)
#define ZN_WIDEST_VECTORS __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define ZN_WIDEST_VECTORS
#endif
