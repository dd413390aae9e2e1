// The incremental group PCA: equal to the PCA of all data where nothing is cut off, and close to it otherwise.
#include "headless/group/group_rows.h"

#include <cmath>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::headless {
namespace {

constexpr std::int64_t kVoxels = 5000; // more than two blocks

using Series = std::vector<float>; // [voxel][volume]

// Noise of unit variance with four sources on top, whose maps are the same in all runs.
Series simulated(int volumes, unsigned seed, std::int64_t voxels = kVoxels) {
    std::mt19937 maps(1);
    std::mt19937 noise(seed);
    std::normal_distribution<double> normal;
    std::vector<std::vector<double>> courses(4, std::vector<double>(static_cast<std::size_t>(volumes)));
    for (auto& course : courses) {
        for (double& value : course) value = normal(noise);
    }
    Series series;
    for (std::int64_t v = 0; v < voxels; ++v) {
        std::vector<double> weights;
        for (int s = 0; s < 4; ++s) weights.push_back((4.0 - 0.5 * s) * normal(maps));
        for (std::size_t t = 0; t < static_cast<std::size_t>(volumes); ++t) {
            double value = normal(noise);
            for (std::size_t s = 0; s < 4; ++s) value += weights[s] * courses[s][t];
            series.push_back(static_cast<float>(value));
        }
    }
    return series;
}

GroupRows reduced(const std::vector<Series>& runs, int keep, int threads = 1, std::int64_t voxels = kVoxels) {
    WorkerThreads team(threads);
    GroupRows rows;
    rows.voxels = voxels;
    for (const Series& run : runs) {
        absorbRun(rows, run.data(), static_cast<int>(static_cast<std::int64_t>(run.size()) / voxels), keep, team);
    }
    return rows;
}

// Inner product of two rows, divided by their lengths.
double cosine(const GroupRows& a, int i, const GroupRows& b, int j) {
    double ab = 0.0;
    double aa = 0.0;
    double bb = 0.0;
    for (std::int64_t v = 0; v < a.voxels; ++v) {
        const double x = a.values[static_cast<std::size_t>(i * a.voxels + v)];
        const double y = b.values[static_cast<std::size_t>(j * b.voxels + v)];
        ab += x * y;
        aa += x * x;
        bb += y * y;
    }
    return ab / std::sqrt(aa * bb);
}

// Power iteration with deflation on the volumes' inner products of all data: the plain way, without LAPACK.
std::vector<double> leadingEigenvalues(const std::vector<Series>& runs, int count) {
    std::vector<std::vector<double>> rows; // [volume of all runs][voxel]
    for (const Series& run : runs) {
        const std::size_t volumes = run.size() / kVoxels;
        for (std::size_t t = 0; t < volumes; ++t) {
            auto& row = rows.emplace_back();
            for (std::size_t v = 0; v < kVoxels; ++v) row.push_back(run[v * volumes + t]);
        }
    }
    const std::size_t n = rows.size();
    std::vector<std::vector<double>> gram(n, std::vector<double>(n));
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            for (std::size_t v = 0; v < kVoxels; ++v) gram[i][j] += rows[i][v] * rows[j][v];
        }
    }
    std::vector<double> values;
    for (int k = 0; k < count; ++k) {
        std::vector<double> x(n, 1.0);
        x[static_cast<std::size_t>(k)] = 2.0;
        double length = 0.0;
        for (int iteration = 0; iteration < 2000; ++iteration) {
            std::vector<double> y(n);
            length = 0.0;
            for (std::size_t i = 0; i < n; ++i) {
                for (std::size_t j = 0; j < n; ++j) y[i] += gram[i][j] * x[j];
                length += y[i] * y[i];
            }
            length = std::sqrt(length);
            for (std::size_t i = 0; i < n; ++i) x[i] = y[i] / length;
        }
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < n; ++j) gram[i][j] -= length * x[i] * x[j];
        }
        values.push_back(length);
    }
    return values;
}

TEST(GroupRows, EqualThePcaOfAllDataWhenNothingIsCutOff) {
    const std::vector<Series> runs = {simulated(6, 2), simulated(8, 3), simulated(5, 4)};
    const GroupRows rows = reduced(runs, 19);
    ASSERT_EQ(rows.count(), 19);
    const std::vector<double> expected = leadingEigenvalues(runs, 4);
    // The rows are stored in single precision between the runs, which rounds each value by up to 6e-8 of itself.
    for (std::size_t k = 0; k < 4; ++k) EXPECT_NEAR(rows.eigenvalues[k] / expected[k], 1.0, 1e-8) << k;
    double sum = 0.0;
    for (const double value : rows.eigenvalues) sum += value;
    EXPECT_NEAR(sum / rows.squares, 1.0, 1e-8);
}

TEST(GroupRows, AreOrthogonalAndAsLongAsTheirEigenvalues) {
    const GroupRows rows = reduced({simulated(10, 2), simulated(10, 3)}, 7);
    ASSERT_EQ(rows.count(), 7);
    for (int i = 0; i < 7; ++i) {
        double squares = 0.0;
        for (std::int64_t v = 0; v < kVoxels; ++v) {
            squares += std::pow(static_cast<double>(rows.values[static_cast<std::size_t>(i * kVoxels + v)]), 2);
        }
        EXPECT_NEAR(squares / rows.eigenvalues[static_cast<std::size_t>(i)], 1.0, 1e-6) << i;
        for (int j = 0; j < i; ++j) EXPECT_NEAR(cosine(rows, i, rows, j), 0.0, 1e-6) << i << ' ' << j;
    }
}

TEST(GroupRows, DoNotDependOnTheOrderOfTheRunsNorOnBatches) {
    std::vector<Series> runs;
    for (unsigned seed = 2; seed < 8; ++seed) runs.push_back(simulated(20, seed));
    const int keep = rowsToKeep({20, 20, 20, 20, 20, 20});
    const GroupRows forwards = reduced(runs, keep);
    const GroupRows backwards = reduced({runs.rbegin(), runs.rend()}, keep);
    GroupRows batches = reduced({runs.begin(), runs.begin() + 4}, keep);
    WorkerThreads team(1);
    absorbGroup(batches, reduced({runs.begin() + 4, runs.end()}, keep), keep, team);
    EXPECT_NEAR(batches.squares, forwards.squares, 1e-9 * forwards.squares);
    for (int k = 0; k < 4; ++k) {
        EXPECT_GT(std::fabs(cosine(forwards, k, backwards, k)), 0.999) << k;
        EXPECT_GT(std::fabs(cosine(forwards, k, batches, k)), 0.999) << k;
    }
}

TEST(GroupRows, AreTheSameBytesWithAnyNumberOfThreads) {
    const std::vector<Series> runs = {simulated(12, 2), simulated(12, 3)};
    EXPECT_EQ(reduced(runs, 9, 1).values, reduced(runs, 9, 3).values);
}

TEST(GroupRows, LeaveOutDirectionsThatTheDataDoNotHave) {
    const Series run = simulated(6, 2);
    EXPECT_EQ(reduced({run, run}, 12).count(), 6); // a duplicate adds no dimension
}

TEST(GroupRows, AreAtMostTwiceAVolumesCountAndAThousand) {
    EXPECT_EQ(rowsToKeep({5}), 5);                // all volumes
    EXPECT_EQ(rowsToKeep({10, 12, 11}), 23);      // 2 * 12 - 1
    EXPECT_EQ(rowsToKeep({600, 600, 600}), 1000); // the limit
    EXPECT_EQ(rowsToKeep(std::vector<int>{}), 0);
}

} // namespace
} // namespace zn::headless
