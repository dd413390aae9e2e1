#include "headless/denoise/cleaning_sums.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace zn::headless {

namespace {

void addTo(std::vector<double>& sum, const std::vector<double>& part) {
    std::transform(part.begin(), part.end(), sum.begin(), sum.begin(), std::plus<>());
}

} // namespace

void CleaningSums::add(const CleaningSums& others) {
    addTo(changesBefore, others.changesBefore);
    addTo(changesAfter, others.changesAfter);
    addTo(products, others.products);
    squaresBefore += others.squaresBefore;
    squaresAfter += others.squaresAfter;
    voxels += others.voxels;
}

std::vector<double> CleaningSums::dvars(const std::vector<double>& changes) const {
    std::vector<double> means = changes;
    for (double& mean : means) mean = std::sqrt(mean / static_cast<double>(voxels));
    means.front() = std::numeric_limits<double>::quiet_NaN(); // the first volume has no predecessor
    return means;
}

void addChanges(const double* course, std::vector<double>& changes) {
    for (std::size_t t = 1; t < changes.size(); ++t) {
        const double change = course[t] - course[t - 1];
        changes[t] += change * change;
    }
}

} // namespace zn::headless
