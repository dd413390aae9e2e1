#include "headless/simulate/random_numbers.h"

#include <cmath>

namespace zn::headless {

double RandomNumbers::uniform() {
    return static_cast<double>(generator_() >> 11) * 0x1.0p-53;
}

double RandomNumbers::normal() {
    if (hasSpare_) {
        hasSpare_ = false;
        return spare_;
    }
    double x = 0.0;
    double y = 0.0;
    double square = 0.0;
    do {
        x = 2.0 * uniform() - 1.0;
        y = 2.0 * uniform() - 1.0;
        square = x * x + y * y;
    } while (square >= 1.0 || square == 0.0);
    const double factor = std::sqrt(-2.0 * std::log(square) / square);
    spare_ = y * factor;
    hasSpare_ = true;
    return x * factor;
}

} // namespace zn::headless
