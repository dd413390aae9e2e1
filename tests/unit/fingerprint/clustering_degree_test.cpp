#include "fingerprint/clustering_degree.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

// Degree of one map whose voxels lie in a row along y.
float degreeOf(const Series& map, float zThreshold, int minClusterSize) {
    const auto v = static_cast<int>(map.size());
    OffsetMatrix<int> coordinates(0, v - 1, 0, 2);
    coordinates.fill(7);
    for (int i = 0; i < v; ++i) coordinates[i][1] = i;
    float degree = -1;
    clusteringDegree(matrixOf({map}).get(), coordinates.get(), 1, v, zThreshold, minClusterSize, &degree);
    return degree;
}

TEST(ClusteringDegree, IsTheShareOfVoxelsInLargeClusters) {
    EXPECT_EQ(degreeOf({3, 3, 0, 3, 0, 0, 3, 3}, 2.5f, 2), 0.8f); // two pairs and a single voxel
}

TEST(ClusteringDegree, CountsBothSignsButNeverJoinsThem) {
    EXPECT_EQ(degreeOf({3, -3, 3, -3}, 2.5f, 2), 0.0f);
    EXPECT_EQ(degreeOf({3, 3, -3, -3}, 2.5f, 2), 1.0f);
    EXPECT_EQ(degreeOf({-3, -3, 0, 3}, 2.5f, 2), static_cast<float>(2.0 / 3));
}

TEST(ClusteringDegree, TakesAThresholdStrictly) {
    EXPECT_EQ(degreeOf({2.5f, 3, 3, -2.5f}, 2.5f, 2), 1.0f);
}

TEST(ClusteringDegree, WithoutASupraThresholdVoxelIsNaN) {
    EXPECT_TRUE(std::isnan(degreeOf({1, -1, 2}, 2.5f, 2)));
    EXPECT_TRUE(std::isnan(degreeOf({kNaN, kNaN}, 2.5f, 2)));
}

TEST(ClusteringDegree, OfSeveralComponentsIsComputedForEach) {
    const OffsetMatrix<float> maps = matrixOf({{3, 3}, {3, -3}, {0, 0}});
    OffsetMatrix<int> coordinates(0, 1, 0, 2);
    coordinates.fill(0);
    coordinates[1][2] = 1;
    Series degree(3);
    clusteringDegree(maps.get(), coordinates.get(), 3, 2, 1.0f, 2, degree.data());
    EXPECT_EQ(degree[0], 1.0f);
    EXPECT_EQ(degree[1], 0.0f);
    EXPECT_TRUE(std::isnan(degree[2]));
}

} // namespace
} // namespace zn::test
