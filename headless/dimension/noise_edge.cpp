#include "headless/dimension/noise_edge.h"

#include "headless/statistics/gaussian_width.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zn::headless {

namespace {

// Midpoints of the positive frequencies up to where the spectrum is negligible; the rest counts as 0.
std::vector<SpatialEigenvalue> alongAxis(double fwhm) {
    if (fwhm <= 0.0) return {{1.0, 1.0}};
    constexpr int kNodes = 8;
    constexpr double kHighest = 0.5; // cycles per voxel
    const double sigma = fwhm / kFwhmOfUnitSigma;
    const double limit = std::min(kHighest, 0.45 / sigma); // the value there is exp(-8)
    std::vector<SpatialEigenvalue> nodes;
    for (int i = 0; i < kNodes; ++i) {
        const double phase = 2.0 * std::numbers::pi * sigma * limit * (i + 0.5) / kNodes;
        nodes.push_back({std::exp(-phase * phase), limit / kHighest / kNodes});
    }
    return nodes;
}

class Noise {
public:
    Noise(const std::vector<double>& temporal, const std::vector<SpatialEigenvalue>& spatial, double voxels)
        : temporal_(temporal), spatial_(spatial), voxels_(voxels),
          largestTemporal_(*std::max_element(temporal.begin(), temporal.end())) {
        for (const auto& s : spatial) largestSpatial_ = std::max(largestSpatial_, s.value);
    }

    // z at q = share / max a.
    double at(double share) const {
        const double q = share / largestTemporal_;
        const double f = overTime(q);
        return f / solve(q * f);
    }

private:
    double overTime(double q) const {
        double sum = 0.0;
        for (const double a : temporal_) sum += a / (1.0 - q * a);
        return sum / voxels_;
    }
    double overSpace(double p) const {
        double sum = 0.0;
        for (const auto& s : spatial_) sum += s.weight * s.value / (1.0 - p * s.value);
        return sum;
    }
    // p with p G(p) = target; the left side grows from 0 without bound.
    double solve(double target) const {
        constexpr int kHalvings = 50;
        double low = 0.0;
        double high = 1.0 / largestSpatial_;
        for (int i = 0; i < kHalvings; ++i) {
            const double p = 0.5 * (low + high);
            (p * overSpace(p) < target ? low : high) = p;
        }
        return 0.5 * (low + high);
    }

    const std::vector<double>& temporal_;
    const std::vector<SpatialEigenvalue>& spatial_;
    double voxels_;
    double largestTemporal_;
    double largestSpatial_ = 0.0;
};

} // namespace

std::vector<SpatialEigenvalue> gaussianSpectrum(const std::array<double, 3>& fwhm) {
    std::vector<SpatialEigenvalue> spectrum = {{1.0, 1.0}};
    for (const double width : fwhm) {
        std::vector<SpatialEigenvalue> product;
        for (const auto& a : spectrum) {
            for (const auto& b : alongAxis(width)) product.push_back({a.value * b.value, a.weight * b.weight});
        }
        spectrum = std::move(product);
    }
    double mean = 0.0;
    for (const auto& s : spectrum) mean += s.weight * s.value;
    for (auto& s : spectrum) s.value /= mean;
    return spectrum;
}

double noiseEdge(const std::vector<double>& temporal, const std::vector<SpatialEigenvalue>& spatial,
                 std::int64_t voxels) {
    // Golden section: z has a single minimum.
    constexpr int kSections = 40;
    const Noise noise(temporal, spatial, static_cast<double>(voxels));
    const double golden = std::numbers::phi - 1.0;
    double low = 0.0;
    double high = 1.0;
    double left = high - golden;
    double right = golden;
    double atLeft = noise.at(left);
    double atRight = noise.at(right);
    for (int i = 0; i < kSections; ++i) {
        if (atLeft < atRight) {
            high = right;
            right = left;
            atRight = atLeft;
            left = high - golden * (high - low);
            atLeft = noise.at(left);
        } else {
            low = left;
            left = right;
            atLeft = atRight;
            right = low + golden * (high - low);
            atRight = noise.at(right);
        }
    }
    return std::min(atLeft, atRight);
}

} // namespace zn::headless
