#include "headless/symmetric/fixed_point_pass.h"

#include "unit/headless/symmetric/white_sources.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace zn::headless {
namespace {

using test::WhiteSources;
using test::whiteSources;

// g(y) and g'(y) by the standard library.
std::pair<double, double> contrast(zn::Nonlinearity nonlinearity, double y) {
    if (nonlinearity == zn::Nonlinearity::cube) return {y * y * y, 3.0 * y * y};
    if (nonlinearity == zn::Nonlinearity::tanh) return {std::tanh(y), 1.0 - std::tanh(y) * std::tanh(y)};
    const double bell = std::exp(-y * y / 2.0);
    return {y * bell, (1.0 - y * y) * bell};
}

// The update as in the paper, one component and one voxel after another.
std::vector<double> plainUpdate(zn::Nonlinearity nonlinearity, const WhiteSources& data, const UnmixingMatrix& w) {
    const int n = data.dimension;
    std::vector<double> result;
    for (int k = 0; k < n; ++k) {
        std::vector<double> mean(static_cast<std::size_t>(n));
        double slope = 0.0;
        for (int v = 0; v < data.voxels; ++v) {
            double y = 0.0;
            for (int j = 0; j < n; ++j) y += w.row(k)[j] * data.data().row(j)[v];
            const auto [g, derivative] = contrast(nonlinearity, y);
            slope += derivative / data.voxels;
            for (int j = 0; j < n; ++j) mean[static_cast<std::size_t>(j)] += g * data.data().row(j)[v] / data.voxels;
        }
        for (int j = 0; j < n; ++j) result.push_back(mean[static_cast<std::size_t>(j)] - slope * w.row(k)[j]);
    }
    return result;
}

TEST(FixedPointPass, EqualsThePlainUpdateForEveryNonlinearityAndAnyNumberOfVoxels) {
    WorkerThreads team(2);
    std::mt19937 random(1);
    for (const auto nonlinearity : {zn::Nonlinearity::tanh, zn::Nonlinearity::gaussian, zn::Nonlinearity::cube}) {
        for (const int voxels : {3, 511, 512, 513, 2000}) {
            const WhiteSources data = whiteSources(3, voxels, 2);
            UnmixingMatrix w = startMatrix(3, random);
            const std::vector<double> expected = plainUpdate(nonlinearity, data, w);
            FixedPointPass(team, nonlinearity, data.data()).update(w);
            for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(w.data()[i], expected[i], 1e-12) << voxels << ' ' << i;
        }
    }
}

TEST(FixedPointPass, CanBeRepeated) {
    WorkerThreads team(1);
    std::mt19937 random(1);
    const WhiteSources data = whiteSources(4, 70000, 2);
    FixedPointPass pass(team, zn::Nonlinearity::tanh, data.data());
    UnmixingMatrix first = startMatrix(4, random);
    UnmixingMatrix second = first;
    pass.update(first);
    pass.update(second);
    EXPECT_TRUE(std::equal(first.row(0), first.row(4), second.row(0)));
}

} // namespace
} // namespace zn::headless
