#include "fingerprint/label_clusters.h"

#include "numeric/array_owners.h"
#include "unit/fingerprint/literal_labelling.h"
#include "unit/fingerprint/test_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace zn::test {
namespace {

using testing::ElementsAre;

struct Labelling {
    std::vector<int> flags;
    int survivors;
};

Labelling label(const std::vector<Voxel>& voxels, float zThreshold, int minClusterSize) {
    const auto v = static_cast<int>(voxels.size());
    const OffsetMatrix<int> coordinates(0, v - 1, 0, 2);
    Series values;
    for (int i = 0; i < v; ++i) {
        const Voxel& voxel = voxels[static_cast<std::size_t>(i)];
        values.push_back(voxel.value);
        coordinates[i][0] = voxel.x;
        coordinates[i][1] = voxel.y;
        coordinates[i][2] = voxel.z;
    }
    std::vector<int> flags(voxels.size(), 99);
    const int survivors = labelClusters(values.data(), coordinates.get(), v, zThreshold, minClusterSize, flags.data());
    return {flags, survivors};
}

// Voxels in one row along x, at these positions and in this order.
std::vector<Voxel> row(const std::vector<int>& positions) {
    std::vector<Voxel> voxels;
    for (const int x : positions) voxels.push_back({3.0f, x, 5, 5});
    return voxels;
}

TEST(LabelClusters, JoinsVoxelsThatTouchAtACorner) {
    const auto [flags, survivors] = label({{3, 4, 4, 4}, {3, 5, 3, 5}}, 2.5f, 2);
    EXPECT_THAT(flags, ElementsAre(2, 2));
    EXPECT_EQ(survivors, 1);
}

TEST(LabelClusters, KeepsVoxelsTwoStepsApartOnOneAxisApart) {
    EXPECT_THAT(label({{3, 4, 4, 4}, {3, 6, 4, 4}}, 2.5f, 1).flags, ElementsAre(1, 1));
    EXPECT_THAT(label({{3, 4, 4, 4}, {3, 4, 6, 4}}, 2.5f, 1).flags, ElementsAre(1, 1));
    EXPECT_THAT(label({{3, 4, 4, 4}, {3, 4, 4, 6}}, 2.5f, 1).flags, ElementsAre(1, 1));
}

TEST(LabelClusters, NeedsAValueStrictlyAboveTheThreshold) {
    EXPECT_THAT(label({{2.5f, 0, 0, 0}, {2.6f, 1, 0, 0}, {kNaN, 2, 0, 0}}, 2.5f, 1).flags, ElementsAre(0, 1, 0));
}

TEST(LabelClusters, ExpandsOnlySeedsSoThatAContiguousRowCanStaySplit) {
    const auto [flags, survivors] = label(row({0, 3, 1, 2}), 2.5f, 1);
    EXPECT_THAT(flags, ElementsAre(2, 2, 2, 2));
    EXPECT_EQ(survivors, 2);
}

TEST(LabelClusters, MergesWhatALaterSeedTouches) {
    const auto [flags, survivors] = label(row({0, 2, 1, 3}), 2.5f, 1);
    EXPECT_THAT(flags, ElementsAre(4, 4, 4, 4));
    EXPECT_EQ(survivors, 1);
}

TEST(LabelClusters, DropsClustersBelowTheMinimumSize) {
    // Clusters of 3, 2 and 1.
    const auto [flags, survivors] = label(row({1, 0, 2, 10, 11, 20}), 2.5f, 2);
    EXPECT_THAT(flags, ElementsAre(3, 3, 3, 2, 2, 0));
    EXPECT_EQ(survivors, 2);
}

TEST(LabelClusters, WithoutASupraThresholdVoxelFindsNothing) {
    const auto [flags, survivors] = label({{1, 0, 0, 0}, {2, 1, 0, 0}}, 2.5f, 1);
    EXPECT_THAT(flags, ElementsAre(0, 0));
    EXPECT_EQ(survivors, 0);
}

TEST(LabelClusters, HasRoomForANeighbourhoodOfAllPoints) {
    std::vector<Voxel> cube;
    for (int i = 0; i < 27; ++i) cube.push_back({3.0f, i % 3, i / 3 % 3, i / 9});
    std::swap(cube.front(), cube[13]); // the centre is the seed and reaches all of them
    EXPECT_THAT(label(cube, 2.5f, 27).flags, testing::Each(27));
}

// Voxels in random order in a cube with the given edge; half of the sets may contain a position twice.
std::vector<Voxel> randomVoxels(std::mt19937& generator, int count, int edge) {
    std::uniform_int_distribution<int> position(-edge / 2, edge - edge / 2 - 1);
    std::uniform_real_distribution<float> value(0.0f, 4.0f);
    std::vector<Voxel> voxels;
    const bool distinct = count % 2 == 0;
    for (int tries = 0; static_cast<int>(voxels.size()) < count && tries < 20 * count; ++tries) {
        const Voxel voxel{value(generator), position(generator), position(generator), position(generator)};
        const auto sits = [&](const Voxel& v) { return v.x == voxel.x && v.y == voxel.y && v.z == voxel.z; };
        if (distinct && std::any_of(voxels.begin(), voxels.end(), sits)) continue;
        voxels.push_back(voxel);
    }
    return voxels;
}

TEST(LabelClusters, EqualsTheLiteralFormForRandomPointsInRandomOrder) {
    std::mt19937 generator(20);
    int merged = 0; // sets with more than one surviving cluster
    for (int set = 0; set < 800; ++set) {
        const int count = std::uniform_int_distribution<int>(1, 200)(generator);
        const int edge = std::uniform_int_distribution<int>(2, 14)(generator);
        const int minClusterSize = std::uniform_int_distribution<int>(1, 12)(generator);
        const float zThreshold = set % 3 == 0 ? 2.0f : -1.0f;
        const auto voxels = randomVoxels(generator, count, edge);
        const LiteralLabelling expected = literalLabelling(voxels, zThreshold, minClusterSize);
        const auto [flags, survivors] = label(voxels, zThreshold, minClusterSize);
        ASSERT_EQ(flags, expected.flags) << "set " << set;
        ASSERT_EQ(survivors, expected.survivors) << "set " << set;
        merged += expected.survivors > 1 ? 1 : 0;
    }
    EXPECT_GT(merged, 200); // not all sets are trivial
}

} // namespace
} // namespace zn::test
