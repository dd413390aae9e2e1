#include "headless/symmetric/start_matrix.h"

#include <algorithm>

namespace zn::headless {

double uniform(std::mt19937& random) {
    return static_cast<double>(random()) / 4294967296.0;
}

UnmixingMatrix startMatrix(int dimension, std::mt19937& random) {
    UnmixingMatrix start(dimension);
    std::generate(start.row(0), start.row(dimension), [&] { return uniform(random) - 0.5; });
    return start;
}

} // namespace zn::headless
