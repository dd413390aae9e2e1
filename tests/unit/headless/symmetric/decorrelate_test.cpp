#include "headless/symmetric/decorrelate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace zn::headless {
namespace {

UnmixingMatrix matrix(int n, std::initializer_list<double> values) {
    UnmixingMatrix result(n);
    std::copy(values.begin(), values.end(), result.data());
    return result;
}

// W Wt = (4 2; 2 2) has the root (6 2; 2 4) / sqrt(10), whose inverse times W is (3 -1; 1 3) / sqrt(10).
TEST(Decorrelate, GivesTheNearestOrthonormalRowsWorkedByHand) {
    UnmixingMatrix w = matrix(2, {2, 0, 1, 1});
    ASSERT_TRUE(decorrelate(w));
    const double expected[] = {3, -1, 1, 3};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(w.data()[i], expected[i] / std::sqrt(10.0), 1e-15);
}

TEST(Decorrelate, LeavesOrthonormalRowsAsTheyAre) {
    UnmixingMatrix w = matrix(2, {0.6, 0.8, -0.8, 0.6});
    ASSERT_TRUE(decorrelate(w));
    const double expected[] = {0.6, 0.8, -0.8, 0.6};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(w.data()[i], expected[i], 1e-15);
}

TEST(Decorrelate, GivesOrthonormalRowsWhoseLengthsDifferedWidely) {
    UnmixingMatrix w = matrix(3, {1e-4, 2e-4, 0, 3, -1, 2, 50, 60, 1000});
    ASSERT_TRUE(decorrelate(w));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            const double product = std::inner_product(w.row(i), w.row(i + 1), w.row(j), 0.0);
            EXPECT_NEAR(product, i == j ? 1.0 : 0.0, 1e-5) << "the condition number of W Wt is 1e14";
        }
    }
}

TEST(Decorrelate, RefusesDependentRowsAndNonFiniteValues) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (UnmixingMatrix w : {matrix(2, {1, 2, 2, 4}), matrix(2, {0, 0, 0, 0}), matrix(2, {1, nan, 0, 1}),
                             matrix(2, {1, infinity, 0, 1})}) {
        EXPECT_FALSE(decorrelate(w)) << w.data()[0] << ' ' << w.data()[1];
    }
}

} // namespace
} // namespace zn::headless
