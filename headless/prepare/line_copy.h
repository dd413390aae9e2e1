#pragma once

#include "headless/prepare/weighted_rows.h"

#include <cstddef>
#include <vector>

namespace zn::headless {

/// The time courses of one line of voxels before it is smoothed, some of which may be 0 throughout.
class LineCopy {
public:
    LineCopy(int length, int columns);

    /// Sets the course at a position; null: 0 throughout.
    ///
    ///   source   [columns]
    void set(int at, const float* source);
    bool isEmpty() const { return filled_ == 0; }

    /// target[t] = sum over d of kernel[d] (course at - d + course at + d)[t], over divisor; courses beyond the line
    /// count as 0. False, and nothing is written, when all of them are 0.
    bool convolve(int at, const std::vector<float>& kernel, float divisor, float* target);

private:
    bool has(int at) const;
    float* course(int at) { return values_.data() + static_cast<std::ptrdiff_t>(at) * columns_; }

    int columns_;
    int filled_ = 0;                 // courses that are not 0
    std::vector<float> values_;      // [position][column]
    std::vector<unsigned char> has_; // [position]
    std::vector<WeightedRow> rows_;  // of one convolution
};

} // namespace zn::headless
