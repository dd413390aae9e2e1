#include "headless/prepare/gaussian_kernel.h"

#include <cmath>

namespace zn::headless {

std::vector<float> gaussianKernel(double sigma) {
    const auto radius = static_cast<int>(std::lround(4.0 * sigma));
    std::vector<double> weights(static_cast<std::size_t>(radius) + 1, 1.0);
    double sum = 1.0;
    for (int d = 1; d <= radius; ++d) {
        const double weight = std::exp(-0.5 * d * d / (sigma * sigma));
        weights[static_cast<std::size_t>(d)] = weight;
        sum += 2.0 * weight;
    }
    std::vector<float> kernel;
    kernel.reserve(weights.size());
    for (const double weight : weights) kernel.push_back(static_cast<float>(weight / sum));
    return kernel;
}

} // namespace zn::headless
