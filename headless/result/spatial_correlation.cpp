#include "headless/result/spatial_correlation.h"

#include <cmath>

namespace zn::headless {

std::vector<double> standardisedMaps(std::span<const float> maps, std::size_t voxels,
                                     const std::vector<std::size_t>& chosen) {
    std::vector<double> result;
    result.reserve(maps.size() / voxels * chosen.size());
    for (std::size_t first = 0; first < maps.size(); first += voxels) {
        double mean = 0.0;
        for (const std::size_t v : chosen) mean += static_cast<double>(maps[first + v]);
        mean /= static_cast<double>(chosen.size());
        double squares = 0.0;
        for (const std::size_t v : chosen) {
            const double deviation = static_cast<double>(maps[first + v]) - mean;
            squares += deviation * deviation;
            result.push_back(deviation);
        }
        const bool usable = squares > 0.0 && std::isfinite(squares);
        const double scale = usable ? 1.0 / std::sqrt(squares) : 0.0;
        for (std::size_t i = result.size() - chosen.size(); i < result.size(); ++i) {
            result[i] = usable ? result[i] * scale : 0.0; // 0 times NaN would stay NaN
        }
    }
    return result;
}

std::vector<double> correlations(MatrixProducts& products, const std::vector<double>& a, const std::vector<double>& b,
                                 std::size_t voxels) {
    const auto rows = static_cast<int>(a.size() / voxels);
    const auto columns = static_cast<int>(b.size() / voxels);
    std::vector<double> result(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    products.multiply(a.data(), b.data(), result.data(), rows, columns, static_cast<int>(voxels), false, true);
    return result;
}

} // namespace zn::headless
