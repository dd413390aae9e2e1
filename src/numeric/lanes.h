#pragma once

#ifndef ZN_LANES
#error "for kernels only, which are compiled once for each number of lanes: see cmake/kernels.cmake"
#endif

// No header of the standard library: see cmake/kernels.cmake.

namespace zn {

/// Number of doubles that a kernel handles together. Each lane computes exactly what scalar code would.
constexpr int kLanes = ZN_LANES;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));

template <class Vector = Lanes> [[gnu::always_inline]] inline Vector load(const double* from) {
    Vector lanes;
    __builtin_memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

template <class Vector> [[gnu::always_inline]] inline void store(const Vector& lanes, double* to) {
    __builtin_memcpy(to, &lanes, sizeof lanes);
}

/// Group `part` of kLanes numbers from an address on.
template <class Number> [[gnu::always_inline]] inline Number* group(Number* from, int part) {
    return from + static_cast<long long>(part) * kLanes;
}

/// The same value in all lanes; subtracting zero leaves every value as it is, -0 included.
[[gnu::always_inline]] inline Lanes broadcast(double value) {
    return value - Lanes{};
}

} // namespace zn
