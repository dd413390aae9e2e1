#include "headless/symmetric/separate_symmetrically.h"

#include "headless/symmetric/order_and_sign.h"

#include "unit/headless/symmetric/white_sources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace zn::headless {
namespace {

using test::WhiteSources;
using test::whiteSources;
using testing::Each;
using testing::ElementsAre;
using testing::Gt;
using testing::SizeIs;

SymmetricResult separate(const WhiteSources& data, const SymmetricSettings& settings, int threads = 2) {
    WorkerThreads team(threads);
    const std::vector<double> oneVolume(static_cast<std::size_t>(data.dimension), 1.0);
    return separateSymmetrically(team, data.data(), {oneVolume.data(), 1}, settings, [](const SymmetricProgress&) {});
}

SymmetricSettings settingsWith(int starts) {
    SymmetricSettings settings;
    settings.starts = starts;
    settings.seed = 3;
    return settings;
}

std::vector<double> projection(const WhiteSources& data, const std::vector<double>& w) {
    std::vector<double> y(static_cast<std::size_t>(data.voxels));
    for (int k = 0; k < data.dimension; ++k) {
        for (int v = 0; v < data.voxels; ++v) {
            y[static_cast<std::size_t>(v)] += w[static_cast<std::size_t>(k)] * data.data().row(k)[v];
        }
    }
    return y;
}

double correlation(const std::vector<double>& a, const double* b) {
    const auto square = [](auto from, std::size_t n) { return std::inner_product(from, from + n, from, 0.0); };
    return std::inner_product(a.begin(), a.end(), b, 0.0) / std::sqrt(square(a.data(), a.size()) * square(b, a.size()));
}

// For every source the largest |r| with a component.
std::vector<double> recovered(const WhiteSources& data, const SymmetricResult& result) {
    std::vector<double> largest(static_cast<std::size_t>(data.dimension));
    for (const auto& vector : result.vectors) {
        const std::vector<double> y = projection(data, vector);
        for (int k = 0; k < data.dimension; ++k) {
            double& best = largest[static_cast<std::size_t>(k)];
            best = std::max(best, std::fabs(correlation(y, data.source(k))));
        }
    }
    return largest;
}

TEST(SeparateSymmetrically, FindsKnownSourcesWithEveryNonlinearity) {
    const WhiteSources data = whiteSources(6, 20000, 1);
    for (const auto nonlinearity : {zn::Nonlinearity::tanh, zn::Nonlinearity::gaussian, zn::Nonlinearity::cube}) {
        SymmetricSettings settings = settingsWith(2);
        settings.nonlinearity = nonlinearity;
        const SymmetricResult result = separate(data, settings);
        EXPECT_THAT(result.vectors, SizeIs(6));
        EXPECT_THAT(recovered(data, result), Each(Gt(0.98)));
    }
}

TEST(SeparateSymmetrically, GivesTheSameBitsWithOneTwoAndThreeThreads) {
    const WhiteSources data = whiteSources(5, 30001, 2);
    const auto one = separate(data, settingsWith(3), 1).vectors;
    EXPECT_EQ(separate(data, settingsWith(3), 2).vectors, one);
    EXPECT_EQ(separate(data, settingsWith(3), 3).vectors, one);
}

TEST(SeparateSymmetrically, TriesStartsOnAnEighthOfManyVoxelsAndOnAllOfFew) {
    EXPECT_EQ(separate(whiteSources(3, 16000, 1), settingsWith(2)).facts.startVoxels, 2000);
    EXPECT_EQ(separate(whiteSources(3, 4000, 1), settingsWith(2)).facts.startVoxels, 600) << "200 per component";
    EXPECT_EQ(separate(whiteSources(3, 1000, 1), settingsWith(2)).facts.startVoxels, 1000);
}

TEST(SeparateSymmetrically, PrefersTheStartWithTheLargestNegentropyAndComparesTheOthersWithIt) {
    const SymmetricFacts facts = separate(whiteSources(6, 20000, 1), settingsWith(4)).facts;
    ASSERT_THAT(facts.starts, SizeIs(4));
    const StartFacts& chosen = facts.starts[static_cast<std::size_t>(facts.chosen)];
    EXPECT_NEAR(chosen.agreement, 1.0, 1e-12);
    for (const StartFacts& start : facts.starts) {
        EXPECT_TRUE(start.converged);
        EXPECT_LE(start.negentropy, chosen.negentropy);
        EXPECT_GT(start.agreement, 0.95) << "the sources are well separated";
        EXPECT_LE(start.agreement, 1.0 + 1e-12);
    }
}

// At a fixed point of the update and the decorrelation, E{g(y_i) y_j} is symmetric.
TEST(SeparateSymmetrically, EndsAtAFixedPoint) {
    const WhiteSources data = whiteSources(4, 20000, 5);
    SymmetricSettings settings = settingsWith(1);
    settings.epsilon = 1e-7;
    std::vector<std::vector<double>> y;
    for (const auto& vector : separate(data, settings).vectors) y.push_back(projection(data, vector));
    ASSERT_THAT(y, SizeIs(4));
    const auto crossMoment = [&](std::size_t i, std::size_t j) {
        double sum = 0.0;
        for (std::size_t v = 0; v < y[i].size(); ++v) sum += std::tanh(y[i][v]) * y[j][v];
        return sum / data.voxels;
    };
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < i; ++j) EXPECT_NEAR(crossMoment(i, j), crossMoment(j, i), 1e-7);
    }
}

TEST(SeparateSymmetrically, MakesTheLargerTailPositive) {
    const WhiteSources data = whiteSources(4, 20000, 1);
    for (const auto& vector : separate(data, settingsWith(1)).vectors) {
        double third = 0.0;
        for (const double y : projection(data, vector)) third += y * y * y;
        EXPECT_GT(third, 0.0);
    }
}

TEST(SeparateSymmetrically, WithTooFewIterationsReturnsOnlyWhatIsSettled) {
    SymmetricSettings settings = settingsWith(2);
    settings.iterationLimit = 1;
    const SymmetricResult result = separate(whiteSources(4, 5000, 1), settings);
    EXPECT_THAT(result.vectors, testing::IsEmpty());
    EXPECT_FALSE(result.facts.starts[0].converged);
    EXPECT_EQ(result.facts.startVoxels, 5000) << "tried again on all voxels";
}

TEST(SeparateSymmetrically, EndsWithoutComponentsWhenTheDataAreNotFinite) {
    WhiteSources data = whiteSources(3, 2000, 1);
    data.z[100] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(separate(data, settingsWith(2)).vectors, testing::IsEmpty());
}

TEST(SeparateSymmetrically, FindsTheOnlyComponentOfOneDimension) {
    EXPECT_THAT(separate(whiteSources(1, 500, 1), settingsWith(1)).vectors, SizeIs(1));
}

// The courses are (0.6, 0.8) and (-0.8, 0.6) times the columns (3, -3, 0) and (1, 1, -2) + 100: variances over time
// (18 * 0.36 + 6 * 0.64) / 3 = 3.44 and (18 * 0.64 + 6 * 0.36) / 3 = 4.56. The mean of the first is larger: 80, not 60.
TEST(OrderAndSign, SortsByExplainedVarianceAndInvertsNegativeThirdMoments) {
    UnmixingMatrix w(2);
    const double rows[] = {0.6, 0.8, -0.8, 0.6};
    std::copy(rows, rows + 4, w.data());
    const double values[] = {3.0, 101.0, -3.0, 101.0, 0.0, 98.0};
    const Dewhitening dewhitening{values, 3};
    EXPECT_THAT(orderedAndSigned(w, dewhitening, {-0.5, 0.5}, {true, true}),
                ElementsAre(ElementsAre(-0.8, 0.6), ElementsAre(-0.6, -0.8)));
    EXPECT_THAT(orderedAndSigned(w, dewhitening, {-0.5, 0.5}, {true, false}), ElementsAre(ElementsAre(-0.6, -0.8)));
}

} // namespace
} // namespace zn::headless
