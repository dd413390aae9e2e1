#include "headless/denoise/explained_squares.h"

#include <numeric>

namespace zn::headless {

double explainedSquares(const Cleaning& cleaning, const Removal& removal, int first, int end) {
    const auto volumes = static_cast<std::size_t>(removal.volumes);
    const auto r = static_cast<std::size_t>(removal.count);
    double sum = 0.0;
    for (auto j = static_cast<std::size_t>(first); j < static_cast<std::size_t>(end); ++j) {
        for (auto k = static_cast<std::size_t>(first); k < static_cast<std::size_t>(end); ++k) {
            const double* left = removal.columns.data() + j * volumes;
            const double* right = removal.columns.data() + k * volumes;
            sum += std::inner_product(left, left + volumes, right, 0.0) * cleaning.products[j * r + k];
        }
    }
    return sum;
}

} // namespace zn::headless
