#pragma once

namespace zn {

#ifdef __wasm__

inline int kernelLanes() {
    return 2;
}
#define ZN_PICK_KERNEL(kernel) (&kernel<2>)

#else

/// Number of doubles that the kernels handle together on this processor: 2, 4 with AVX2, or 8 with AVX-512. All forms
/// of a kernel compute the same bits.
inline int kernelLanes() {
    static const int lanes = [] {
        // The first processors with AVX-512 lower their clock when they use it; those with VBMI2 do not.
        if (__builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vbmi2") != 0) return 8;
        return __builtin_cpu_supports("avx2") != 0 ? 4 : 2;
    }();
    return lanes;
}

/// Picks the kernel for the processor from the instantiations of a template over the number of lanes.
#define ZN_PICK_KERNEL(kernel) (zn::kernelLanes() == 8 ? &kernel<8> : zn::kernelLanes() == 4 ? &kernel<4> : &kernel<2>)

#endif

} // namespace zn
