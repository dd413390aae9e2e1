#include "headless/group/normal_deviate.h"

#include <cmath>

namespace zn::headless {

double normalDeviate(double t, double freedom) {
    const double a = freedom - 0.5;
    const double b = 48.0 * a * a;
    const double y = a * std::log1p(t * t / freedom);
    const double tail = (((-0.4 * y - 3.3) * y - 24.0) * y - 85.5) / (0.8 * y * y + 100.0 + b);
    return std::copysign(((tail + y + 3.0) / b + 1.0) * std::sqrt(y), t);
}

} // namespace zn::headless
