#include "headless/dimension/component_estimate.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace zn::headless {

namespace {

constexpr double kRounding = 1e-12;

using Eigenvalues = std::span<const double>;

double meanOf(Eigenvalues values) {
    double sum = 0.0;
    for (const double value : values) sum += value;
    return sum / static_cast<double>(values.size());
}

double varianceOf(Eigenvalues values) {
    const double mean = meanOf(values);
    double sum = 0.0;
    for (const double value : values) sum += (value - mean) * (value - mean);
    return sum / static_cast<double>(values.size());
}

double effectiveSamples(Eigenvalues values, std::size_t k, double voxels) {
    const Eigenvalues noise = values.subspan(k);
    const double mean = meanOf(noise);
    const double variance = varianceOf(noise);
    if (!(variance > 0.0)) return voxels;
    return std::min(voxels, static_cast<double>(noise.size()) * mean * mean / variance);
}

// Gavish and Donoho's factor on the median singular value, squared for eigenvalues.
double thresholdFactor(double ratio) {
    const double b = std::min(1.0, ratio);
    const double w = ((0.56 * b - 0.95) * b + 1.82) * b + 1.43;
    return w * w;
}

std::size_t countAbove(Eigenvalues values, double threshold) {
    const auto above = std::count_if(values.begin(), values.end(), [&](double value) { return value > threshold; });
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(1, above));
}

double mdl(Eigenvalues values, std::size_t k, double samples) {
    const Eigenvalues noise = values.subspan(k);
    double meanLogarithm = 0.0;
    for (const double value : noise) meanLogarithm += std::log(value) / static_cast<double>(noise.size());
    const auto n = static_cast<double>(noise.size());
    const auto parameters = 0.5 * static_cast<double>(k * (2 * values.size() - k));
    return samples * n * (std::log(meanOf(noise)) - meanLogarithm) + parameters * std::log(samples);
}

// ln |A_Z|: how sharply the data determine the kept directions. Equal eigenvalues leave directions undetermined; the
// lower bound keeps the logarithm finite.
double logCurvature(Eigenvalues values, std::size_t k, double noise, double samples) {
    double sum = 0.0;
    for (std::size_t i = 0; i < k; ++i) {
        for (std::size_t j = i + 1; j < values.size(); ++j) {
            const double kept = j < k ? values[j] : noise;
            const double curvature = (1.0 / kept - 1.0 / values[i]) * (values[i] - values[j]);
            sum += std::log(std::max(curvature, 1e-300)) + std::log(samples);
        }
    }
    return sum;
}

double laplace(Eigenvalues values, std::size_t k, double samples) {
    const auto d = static_cast<double>(values.size());
    const auto count = static_cast<double>(k);
    const double noise = meanOf(values.subspan(k));
    const double parameters = d * count - count * (count + 1.0) / 2.0;
    double logPrior = -count * std::numbers::ln2;
    double logKept = 0.0;
    for (std::size_t i = 0; i < k; ++i) {
        const double half = 0.5 * (d - static_cast<double>(i));
        logPrior += std::lgamma(half) - half * std::log(std::numbers::pi);
        logKept += std::log(values[i]);
    }
    return logPrior - 0.5 * samples * (logKept + (d - count) * std::log(noise)) +
           0.5 * (parameters + count) * std::log(2.0 * std::numbers::pi) -
           0.5 * logCurvature(values, k, noise, samples) - 0.5 * count * std::log(samples);
}

} // namespace

ComponentEstimate eigenvalueCriteria(const std::vector<double>& eigenvalues, std::int64_t voxels) {
    ComponentEstimate result;
    result.eigenvalues = eigenvalues;
    Eigenvalues values(eigenvalues);
    while (values.size() > 1 && values.back() <= kRounding * values.front()) values = values.first(values.size() - 1);
    const std::size_t d = values.size();
    const std::size_t most = std::max<std::size_t>(1, d / 4);
    if (d < 2) return result;

    const double median = 0.5 * (values[(d - 1) / 2] + values[d / 2]);
    std::size_t k = most;
    while (true) {
        result.effectiveSamples = effectiveSamples(values, k, static_cast<double>(voxels));
        const double factor = thresholdFactor(static_cast<double>(d) / result.effectiveSamples);
        const std::size_t next = countAbove(values, factor * median);
        if (next >= k) break;
        k = next;
    }
    result.byThreshold = static_cast<int>(k);
    for (std::size_t count = 1; count <= most; ++count) {
        result.mdl.push_back(mdl(values, count, result.effectiveSamples));
        result.laplace.push_back(laplace(values, count, result.effectiveSamples));
    }
    result.byMdl = 1 + static_cast<int>(std::min_element(result.mdl.begin(), result.mdl.end()) - result.mdl.begin());
    result.byLaplace =
        1 + static_cast<int>(std::max_element(result.laplace.begin(), result.laplace.end()) - result.laplace.begin());
    return result;
}

ComponentEstimate estimateComponents(const CovariancesOf& covariancesOf, MatrixProducts& products) {
    const SeriesCovariances covariances = covariancesOf({});
    const ResidualNoise noise(covariances, products);
    ComponentEstimate result = eigenvalueCriteria(noise.eigenvalues(), covariances.voxels);
    const int first = parallelAnalysis(noise).count;
    result.parallel = parallelAnalysis({covariancesOf(noise.leading(first)), products});
    return result;
}

bool ComponentEstimate::disagree() const {
    const auto [least, most] = std::minmax({parallel.count, byMdl, byThreshold});
    return most >= 2 * least;
}

} // namespace zn::headless
