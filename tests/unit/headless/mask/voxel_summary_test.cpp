#include "headless/mask/voxel_summary.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

constexpr int kVolumes = 37;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class Value> Value valueAt(std::int64_t voxel, int t) {
    return static_cast<Value>(1000.0 * std::sin(static_cast<double>(voxel) + 0.1 * t) + 0.37 * t);
}

template <class Value> std::unique_ptr<Value[]> coursesOf(std::int64_t voxels) {
    auto values = std::make_unique<Value[]>(static_cast<std::size_t>(voxels * kVolumes));
    for (std::int64_t v = 0; v < voxels; ++v) {
        for (int t = 0; t < kVolumes; ++t) values[static_cast<std::size_t>(v * kVolumes + t)] = valueAt<Value>(v, t);
    }
    return values;
}

// Voxel by voxel, in the order of the volumes.
template <class Value> float literalMean(const Value* course) {
    double sum = 0.0;
    int count = 0;
    for (int t = 0; t < kVolumes; ++t) {
        if (!std::isfinite(static_cast<double>(course[t]))) continue;
        sum += static_cast<double>(course[t]);
        ++count;
    }
    return count > 0 ? static_cast<float>(sum / count) : 0.0f;
}

template <class Value> void expectLiteralMeans(const VoxelSummary& summary, const Value* values) {
    for (std::size_t v = 0; v < summary.mean.size(); ++v) {
        EXPECT_EQ(summary.mean[v], literalMean(values + v * kVolumes)) << v;
    }
}

// Numbers of voxels that fill groups and that do not; the last one is more than a thread takes at a time.
TEST(SummariseVoxels, GivesTheMeansOfTheLiteralForm) {
    WorkerThreads threads(2);
    for (const std::int64_t voxels : {1, 7, 8, 9, 35, 9001}) {
        TimeSeries floats{voxels, kVolumes, nullptr, coursesOf<float>(voxels)};
        expectLiteralMeans(summariseVoxels(floats, threads), floats.floats.get());
        TimeSeries shorts{voxels, kVolumes, coursesOf<std::int16_t>(voxels), nullptr};
        expectLiteralMeans(summariseVoxels(shorts, threads), shorts.shorts.get());
    }
}

TEST(SummariseVoxels, MarksConstantAndNonFiniteCoursesAmongOthers) {
    TimeSeries series{12, kVolumes, nullptr, coursesOf<float>(12)};
    const auto course = [&](int voxel) { return series.floats.get() + voxel * kVolumes; };
    std::fill_n(course(2), kVolumes, 5.0f);
    course(4)[kVolumes - 1] = NAN;
    course(5)[0] = kInfinity;
    course(5)[1] = -kInfinity;
    std::fill_n(course(9), kVolumes, NAN);
    std::fill_n(course(10), kVolumes - 1, -1.0f);
    WorkerThreads threads(1);
    const VoxelSummary summary = summariseVoxels(series, threads);
    EXPECT_EQ(summary.finite, (std::vector<unsigned char>{1, 1, 1, 1, 0, 0, 1, 1, 1, 0, 1, 1}));
    EXPECT_EQ(summary.constant, (std::vector<unsigned char>{0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    expectLiteralMeans(summary, series.floats.get());

    std::vector<unsigned char> mask = {1, 0, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1};
    const std::vector<unsigned char> requested = mask;
    const ExcludedVoxels excluded = removeUnusable(summary, mask);
    EXPECT_EQ(excluded.notFinite, 2);
    EXPECT_EQ(excluded.constant, 1);
    EXPECT_EQ(mask, (std::vector<unsigned char>{1, 0, 0, 1, 0, 0, 1, 1, 1, 0, 1, 1}));

    std::vector<unsigned char> again = requested;
    EXPECT_EQ(removeUnusable(summariseVoxels(series, threads, requested), again).all(), 3);
    EXPECT_EQ(again, mask);
}

TEST(SummariseVoxels, DoesNotReadGroupsOutsideTheMask) {
    TimeSeries series{24, kVolumes, nullptr, coursesOf<float>(24)};
    std::vector<unsigned char> mask(24);
    mask[11] = 1;
    WorkerThreads threads(1);
    const VoxelSummary summary = summariseVoxels(series, threads, mask);
    EXPECT_EQ(summary.mean[11], literalMean(series.floats.get() + 11 * kVolumes));
    EXPECT_EQ(summary.mean[3], 0.0f);
    EXPECT_EQ(summary.mean[16], 0.0f);
}

TEST(SummariseVoxels, TakesTheMeanOfAVoxelThatWasNotStoredFromItsSum) {
    TimeSeries series{4, kVolumes, nullptr, coursesOf<float>(4)};
    series.inside = {1, 0, 0, 1};
    series.sums = {0.0, 3.0 * kVolumes, NAN, 0.0};
    WorkerThreads threads(1);
    const VoxelSummary summary = summariseVoxels(series, threads);
    EXPECT_EQ(summary.mean[0], literalMean(series.floats.get()));
    EXPECT_EQ(summary.mean[1], 3.0f);
    EXPECT_EQ(summary.mean[2], 0.0f);
    EXPECT_EQ(summary.finite, (std::vector<unsigned char>{1, 1, 0, 1}));
}

} // namespace
} // namespace zn::test
