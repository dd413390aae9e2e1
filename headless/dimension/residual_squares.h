#pragma once

#include "headless/blas/block_product.h"

#include <vector>

namespace zn::headless {

/// Orthonormal time courses, row after row: [count][T].
struct Directions {
    int count = 0;
    std::vector<double> rows;
};

/// What is left of courses when some directions have been projected out: the sum of squares of each, by matrix products
/// over many courses at a time.
class ResidualSquares {
public:
    /// `directions` must outlive the object.
    ResidualSquares(const Directions& directions, int volumes);

    /// fill(t) is the value at volume t. `result`, which must outlive the object, is set by a later call at the latest
    /// by flush().
    template <class Fill> void add(Fill fill, double& result) {
        double* row = rows_.data() + results_.size() * static_cast<std::size_t>(volumes_);
        for (int t = 0; t < volumes_; ++t) row[t] = fill(t);
        results_.push_back(&result);
        if (results_.size() == kRows) flush();
    }
    void flush();

private:
    static constexpr std::size_t kRows = 256; // courses per call of the BLAS

    const Directions& directions_;
    int volumes_;
    std::vector<double> rows_;
    std::vector<double> parts_; // of the courses along the directions
    std::vector<double*> results_;
};

} // namespace zn::headless
