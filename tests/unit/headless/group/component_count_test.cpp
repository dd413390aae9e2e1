// The number of components of a run and of a group.
#include "headless/group/steps/component_count.h"
#include "headless/prepare/high_pass.h"
#include "headless/simulate/random_numbers.h"

#include <numeric>

#include <gtest/gtest.h>

namespace zn::headless {
namespace {

constexpr int kVolumes = 60;
constexpr std::size_t kBlock = 100; // voxels

// A run of 20 x 20 x 10 voxels: noise of variance 1, and in each of some blocks a course of its own; then without its
// mean and the slowest cosines.
PreparedRun runWith(std::size_t blocks, GroupStudy& study, WorkerThreads& threads) {
    study.grid.size = {20, 20, 10};
    study.mask.assign(4000, 1);
    study.inside.resize(4000);
    std::iota(study.inside.begin(), study.inside.end(), 0);
    RandomNumbers random(5);
    PreparedRun run;
    run.volumes = kVolumes;
    run.lost = 3;
    for (std::size_t i = 0; i < 4000U * kVolumes; ++i) run.series.push_back(static_cast<float>(random.normal()));
    for (std::size_t block = 0; block < blocks; ++block) {
        for (std::size_t t = 0; t < kVolumes; ++t) {
            const auto value = static_cast<float>(3.0 * random.normal());
            for (std::size_t v = 0; v < kBlock; ++v) run.series[(block * kBlock + v) * kVolumes + t] += value;
        }
    }
    for (auto course = run.series.begin(); course != run.series.end(); course += kVolumes) {
        const float mean = std::accumulate(course, course + kVolumes, 0.0f) / kVolumes;
        for (auto value = course; value != course + kVolumes; ++value) *value -= mean;
    }
    removeCosines({run.series.data(), kVolumes, study.grid.size, study.mask}, run.lost, threads);
    return run;
}

TEST(ComponentsOfRun, AreThoseAboveTheNoise) {
    WorkerThreads threads(2);
    for (const std::size_t blocks : {2U, 5U, 12U}) {
        GroupStudy study;
        const PreparedRun run = runWith(blocks, study, threads);
        EXPECT_EQ(componentsOfRun(study, run, threads), static_cast<int>(blocks));
    }
}

TEST(ComponentsOfGroup, AreTheMedianOfTheRunsWithinTheLimits) {
    EXPECT_EQ(componentsOfGroup({9, 4, 7}, 100), 7);
    EXPECT_EQ(componentsOfGroup({9, 4, 7, 6}, 100), 7); // 6.5, rounded up
    EXPECT_EQ(componentsOfGroup({9, 4, 7}, 5), 5);
    EXPECT_EQ(componentsOfGroup({1, 1}, 100), 2);
}

} // namespace
} // namespace zn::headless
