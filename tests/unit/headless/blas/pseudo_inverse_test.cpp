#include "headless/blas/pseudo_inverse.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::DoubleNear;
using testing::Pointwise;

constexpr double kTolerance = 1e-12;

TEST(PseudoInverse, OfIndependentColumnsIsTheOneWorkedByHand) {
    // Columns (1, 0, 0) and (1, 1, 0): x1 = y1 - y2, x2 = y2.
    const std::vector<double> columns = {1, 0, 0, 1, 1, 0};
    std::vector<double> inverse(6);
    EXPECT_EQ(pseudoInverse(columns.data(), 2, 3, 1e-6, inverse.data()), 2);
    EXPECT_THAT(inverse, Pointwise(DoubleNear(kTolerance), std::vector<double>{1, -1, 0, 0, 1, 0}));
}

TEST(PseudoInverse, OfTwiceTheSameColumnGivesEachHalf) {
    const std::vector<double> columns = {0, 2, 0, 0, 2, 0};
    std::vector<double> inverse(6);
    EXPECT_EQ(pseudoInverse(columns.data(), 2, 3, 1e-6, inverse.data()), 1);
    EXPECT_THAT(inverse, Pointwise(DoubleNear(kTolerance), std::vector<double>{0, 0.25, 0, 0, 0.25, 0}));
}

TEST(PseudoInverse, OfMoreColumnsThanRowsIsTheShortestSolution) {
    const std::vector<double> columns = {3, 4}; // of a single row: 3 x1 + 4 x2 = y
    std::vector<double> inverse(2);
    EXPECT_EQ(pseudoInverse(columns.data(), 2, 1, 1e-6, inverse.data()), 1);
    EXPECT_THAT(inverse, Pointwise(DoubleNear(kTolerance), std::vector<double>{3.0 / 25, 4.0 / 25}));
}

TEST(PseudoInverse, OfZerosIsZero) {
    const std::vector<double> columns(4);
    std::vector<double> inverse(4, 1.0);
    EXPECT_EQ(pseudoInverse(columns.data(), 2, 2, 1e-6, inverse.data()), 0);
    EXPECT_THAT(inverse, Pointwise(DoubleNear(kTolerance), std::vector<double>{0, 0, 0, 0}));
}

TEST(PseudoInverse, CountsAColumnWithinTheToleranceAsDependent) {
    const std::vector<double> columns = {1, 0, 1, 1e-8};
    EXPECT_EQ(rankOf(columns.data(), 2, 2, 1e-6), 1);
    EXPECT_EQ(rankOf(columns.data(), 2, 2, 1e-10), 2);
    EXPECT_EQ(rankOf(columns.data(), 0, 2, 1e-6), 0);
}

} // namespace
} // namespace zn::test
