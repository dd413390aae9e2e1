#include "headless/measures/kept_variance.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// The eigenpairs of the covariance of four voxels and three volumes, by numpy.linalg.eigh, without the mean over
// voxels:
// [[10, 12, 11], [20, 19, 24], [33, 30, 27], [7, 7, 10]].
const TemporalEigenpairs kEigen = {{229.65658257432796, 5.197065043881493, 0.3963523817905342},
                                   {-0.668402791940201, -0.2988721828279987, -0.68111168398301, -0.5657211119477574,
                                    -0.39024797040450043, 0.7264063223098771, -0.4829050954619728, 0.8708512731384134,
                                    0.09176452936765628}};

// From the data themselves: projected onto the eigenvectors kept, each voxel's mean over time removed.
TEST(KeptVariance, IsThatOfTheProjectedDataWithoutTheirMeansOverTime) {
    EXPECT_NEAR(keptVariancePercent(kEigen, 1, 1), 41.75028981446213, 1e-9);
    EXPECT_NEAR(keptVariancePercent(kEigen, 2, 2), 54.10370463997315, 1e-9);
    EXPECT_NEAR(keptVariancePercent(kEigen, 1, 2), 95.85399445443531, 1e-9);
    EXPECT_NEAR(keptVariancePercent(kEigen, 1, 3), 100.0, 1e-9);
}

TEST(KeptVariance, IsUnknownWithoutEigenpairs) {
    EXPECT_TRUE(std::isnan(keptVariancePercent({}, 1, 2)));
}

} // namespace
} // namespace zn::test
