#include "headless/prepare/weighted_rows.h"

#include "numeric/lanes.h"

namespace zn::headless {

namespace {

constexpr int kFloats = 2 * kLanes; // two floats per double lane
using Floats = float __attribute__((vector_size(kFloats * sizeof(float))));

// `parts` groups of columns from `first` on; their sums stay in registers.
template <int parts>
[[gnu::always_inline]] inline void addGroups(const WeightedRow* rows, int count, int first, float divisor,
                                             float* target) {
    Floats sums[parts] = {};
    for (int row = 0; row < count; ++row) {
        const float* from = rows[row].values + first;
        for (int part = 0; part < parts; ++part) {
            Floats values;
            __builtin_memcpy(&values, from + static_cast<long long>(part) * kFloats, sizeof values);
            sums[part] += rows[row].weight * values;
        }
    }
    for (int part = 0; part < parts; ++part) {
        const Floats quotient = sums[part] / divisor;
        __builtin_memcpy(target + first + static_cast<long long>(part) * kFloats, &quotient, sizeof quotient);
    }
}

[[gnu::always_inline]] inline void addColumn(const WeightedRow* rows, int count, int t, float divisor, float* target) {
    float sum = 0.0f;
    for (int row = 0; row < count; ++row) sum += rows[row].weight * rows[row].values[t];
    target[t] = sum / divisor;
}

} // namespace

template <> void addRowsKernel<kLanes>(const WeightedRow* rows, int count, int columns, float divisor, float* target) {
    constexpr int kParts = 4;
    int t = 0;
    for (; t + kParts * kFloats <= columns; t += kParts * kFloats) {
        addGroups<kParts>(rows, count, t, divisor, target);
    }
    for (; t + kFloats <= columns; t += kFloats) addGroups<1>(rows, count, t, divisor, target);
    if (t < columns && columns >= kFloats) { // together with some that are complete already
        addGroups<1>(rows, count, columns - kFloats, divisor, target);
        return;
    }
    for (; t < columns; ++t) addColumn(rows, count, t, divisor, target);
}

} // namespace zn::headless
