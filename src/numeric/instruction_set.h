#pragma once

namespace zn {

/// Whether this processor has the AVX2 instructions and kernels exist for them. Both forms of a kernel compute the same
/// bits: only the number of independent doubles handled together differs, 2 or 4.
inline bool useAvx2() {
#ifdef ZN_BASELINE_KERNELS_ONLY // see cmake/kernels.cmake
    return false;
#else
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
#endif
}

/// Picks the kernel for the processor from the two instantiations of a template over the number of lanes.
#ifdef ZN_BASELINE_KERNELS_ONLY
#define ZN_PICK_KERNEL(kernel) (&kernel<2>)
#else
#define ZN_PICK_KERNEL(kernel) (zn::useAvx2() ? &kernel<4> : &kernel<2>)
#endif

} // namespace zn
