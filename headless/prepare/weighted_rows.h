#pragma once

namespace zn::headless {

struct WeightedRow {
    float weight;
    const float* values; ///< [columns]
};

/// target[t] = (sum over the rows of weight values[t], in their order) / divisor
///
///   rows      [0..count-1]
///   target    [0..columns-1]   out; overlaps none of the rows
///
/// The same bits for any number of lanes.
template <int lanes> void addRowsKernel(const WeightedRow* rows, int count, int columns, float divisor, float* target);

} // namespace zn::headless
