#include "headless/statistics/correlation.h"

#include <vector>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(Correlation, CountsOnlyTheElementsWanted) {
    // (1, 2, 3) and (1, 3, 2). Deviations (-1, 0, 1) and (-1, 1, 0): r = 1 / 2.
    const std::vector<float> a = {1, 2, 3, 100};
    const std::vector<float> b = {1, 3, 2, -100};
    EXPECT_DOUBLE_EQ(correlation(a, b, [](std::size_t i) { return i < 3; }), 0.5);
}

TEST(Correlation, WithAConstantIsNaN) {
    const std::vector<float> a = {1, 2, 3};
    const std::vector<float> b = {4, 4, 4};
    EXPECT_TRUE(std::isnan(correlation(a, b, [](std::size_t) { return true; })));
}

} // namespace
} // namespace zn::test
