#include "headless/prepare/change_sums.h"

#include "numeric/lanes.h"

namespace zn::headless {

namespace {

constexpr int kFloats = 2 * kLanes; // two floats per double lane
constexpr int kParts = kChangeSums / kFloats;
using Floats = float __attribute__((vector_size(kFloats * sizeof(float))));
static_assert(kChangeSums % kFloats == 0);

[[gnu::always_inline]] inline Floats loaded(const float* from) {
    Floats values;
    __builtin_memcpy(&values, from, sizeof values);
    return values;
}

} // namespace

template <>
void changeSumsKernel<kLanes>(const float* a, const float* b, int volumes, float* differences, float* squares) {
    Floats difference[kParts];
    Floats square[kParts];
    __builtin_memcpy(difference, differences, sizeof difference);
    __builtin_memcpy(square, squares, sizeof square);
    int t = 1;
    for (; t + kChangeSums <= volumes; t += kChangeSums) {
        for (int part = 0; part < kParts; ++part) {
            const int at = t + part * kFloats;
            const Floats x = loaded(a + at) - loaded(a + at - 1);
            const Floats y = loaded(b + at) - loaded(b + at - 1);
            difference[part] += (x - y) * (x - y);
            square[part] += x * x + y * y;
        }
    }
    __builtin_memcpy(differences, difference, sizeof difference);
    __builtin_memcpy(squares, square, sizeof square);
    for (; t < volumes; ++t) {
        const float x = a[t] - a[t - 1];
        const float y = b[t] - b[t - 1];
        differences[0] += (x - y) * (x - y);
        squares[0] += x * x + y * y;
    }
}

} // namespace zn::headless
