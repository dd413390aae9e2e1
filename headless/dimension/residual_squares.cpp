#include "headless/dimension/residual_squares.h"

#include <algorithm>

namespace zn::headless {

namespace {

double sumOfSquares(const double* values, std::size_t count) {
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) sum += values[i] * values[i];
    return sum;
}

} // namespace

ResidualSquares::ResidualSquares(const Directions& directions, int volumes)
    : directions_(directions), volumes_(volumes), rows_(kRows * static_cast<std::size_t>(volumes)),
      parts_(kRows * static_cast<std::size_t>(directions.count)) {
    results_.reserve(kRows);
}

void ResidualSquares::flush() {
    const int k = directions_.count;
    const auto courses = static_cast<int>(results_.size());
    if (courses == 0) return;
    blockProduct({rows_.data(), volumes_}, {directions_.rows.data(), volumes_, true}, courses, k, volumes_, false,
                 parts_.data(), k);
    const auto length = static_cast<std::size_t>(volumes_);
    const auto width = static_cast<std::size_t>(k);
    for (std::size_t i = 0; i < results_.size(); ++i) {
        const double all = sumOfSquares(rows_.data() + i * length, length);
        *results_[i] = std::max(0.0, all - sumOfSquares(parts_.data() + i * width, width));
    }
    results_.clear();
}

} // namespace zn::headless
