#pragma once

#include <cstddef>
#include <vector>

namespace zn::headless {

/// Rows that project whitened data onto components, n x n, row-major.
class UnmixingMatrix {
public:
    UnmixingMatrix() = default;
    explicit UnmixingMatrix(int dimension)
        : dimension_(dimension), values_(static_cast<std::size_t>(dimension) * static_cast<std::size_t>(dimension)) {}

    int dimension() const { return dimension_; }
    double* data() { return values_.data(); }
    const double* data() const { return values_.data(); }
    double* row(int k) { return data() + offset(k); }
    const double* row(int k) const { return data() + offset(k); }

private:
    std::ptrdiff_t offset(int k) const { return std::ptrdiff_t{k} * dimension_; }

    int dimension_ = 0;
    std::vector<double> values_;
};

} // namespace zn::headless
