#include "web/engine/blas/lapacke.h"

#include <cmath>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

constexpr double kTolerance = 1e-14; // a few roundings of numbers near 1

TEST(EigenSymmetric, FindsEigenvaluesInAscendingOrderFromTheLowerTriangle) {
    std::vector<double> matrix = {2, 1, 99, 2}; // column after column; the 99 is above the diagonal
    std::vector<double> values(2);
    EXPECT_EQ(LAPACKE_dsyev(LAPACK_COL_MAJOR, 'N', 'L', 2, matrix.data(), 2, values.data()), 0);
    EXPECT_THAT(values, ElementsAre(DoubleNear(1, kTolerance), DoubleNear(3, kTolerance)));
}

TEST(EigenSymmetric, PutsUnitEigenvectorsIntoColumns) {
    std::vector<double> matrix = {2, 1, 0, 2};
    std::vector<double> values(2);
    EXPECT_EQ(LAPACKE_dsyevd(LAPACK_COL_MAJOR, 'V', 'L', 2, matrix.data(), 2, values.data()), 0);
    EXPECT_NEAR(matrix[0], -matrix[1], kTolerance); // (1, -1) / sqrt(2) for 1
    EXPECT_NEAR(matrix[2], matrix[3], kTolerance);  // (1, 1) / sqrt(2) for 3
    EXPECT_NEAR(std::fabs(matrix[0]), std::sqrt(0.5), kTolerance);
}

TEST(EigenSymmetric, SolvesAPositiveDefiniteSystem) {
    std::vector<double> matrix = {4, 2, 99, 3}; // row after row; the 99 is below the diagonal
    std::vector<double> right = {8, 4, 7, 5};
    EXPECT_EQ(LAPACKE_dposv(LAPACK_ROW_MAJOR, 'U', 2, 2, matrix.data(), 2, right.data(), 2), 0);
    EXPECT_THAT(right, ElementsAre(DoubleNear(1.25, kTolerance), DoubleNear(0.25, kTolerance),
                                   DoubleNear(1.5, kTolerance), DoubleNear(1.5, kTolerance)));
}

TEST(EigenSymmetric, RefusesAnIndefiniteSystem) {
    std::vector<double> matrix = {1, 2, 2, 1};
    std::vector<double> right = {1, 1};
    EXPECT_EQ(LAPACKE_dposv(LAPACK_ROW_MAJOR, 'U', 2, 1, matrix.data(), 2, right.data(), 1), 1);
}

} // namespace
