#include "headless/measures/map_moments.h"

#include <cmath>

namespace zn::headless {

MapMoments momentsOf(std::span<const float> map, const std::vector<unsigned char>& mask) {
    double count = 0.0;
    double mean = 0.0;
    for (std::size_t v = 0; v < map.size(); ++v) {
        if (mask[v] == 0) continue;
        ++count;
        mean += static_cast<double>(map[v]);
    }
    mean /= count;
    double second = 0.0;
    double third = 0.0;
    double fourth = 0.0;
    for (std::size_t v = 0; v < map.size(); ++v) {
        if (mask[v] == 0) continue;
        const double deviation = static_cast<double>(map[v]) - mean;
        const double square = deviation * deviation;
        second += square;
        third += square * deviation;
        fourth += square * square;
    }
    if (!(second > 0.0)) return {NAN, NAN};
    const double variance = second / count;
    return {third / count / std::pow(variance, 1.5), fourth / count / (variance * variance) - 3.0};
}

} // namespace zn::headless
