#pragma once

#include <cstdint>
#include <vector>

namespace zn::headless {

/// The sum of r rt over time courses r, which are gathered into blocks for the BLAS.
class CrossProducts {
public:
    explicit CrossProducts(int volumes);

    /// fill(t) is the value at volume t.
    template <class Fill> void add(Fill fill) {
        double* row = rows_.data() + std::int64_t{1} * count_ * volumes_;
        for (int t = 0; t < volumes_; ++t) row[t] = fill(t);
        ++total_;
        if (++count_ == kRows) flush();
    }
    /// Must be called before sum().
    void flush();

    /// The upper triangle: [volumes][volumes].
    const std::vector<double>& sum() const { return sum_; }
    /// The number of courses.
    std::int64_t total() const { return total_; }

private:
    static constexpr int kRows = 256; // courses per call of the BLAS

    int volumes_;
    int count_ = 0;
    std::int64_t total_ = 0;
    std::vector<double> rows_;
    std::vector<double> sum_;
};

} // namespace zn::headless
