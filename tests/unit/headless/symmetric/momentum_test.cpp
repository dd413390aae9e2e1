#include "headless/symmetric/momentum.h"

#include <gtest/gtest.h>

namespace zn::headless {
namespace {

UnmixingMatrix pair(double first, double second) {
    UnmixingMatrix result(2);
    result.data()[0] = first;
    result.data()[3] = second;
    return result;
}

TEST(Momentum, HasNoneAtFirst) {
    Momentum momentum;
    EXPECT_EQ(*momentum.next(pair(0.0, 0.0), pair(1.0, 0.0)).data(), 1.0);
}

// A quarter of the last change of g after one step in the same direction, two fifths after two.
TEST(Momentum, GoesBeyondTheValueInTheSameDirection) {
    Momentum momentum;
    momentum.next(pair(0.0, 0.0), pair(1.0, 0.0));
    EXPECT_EQ(*momentum.next(pair(1.0, 0.0), pair(1.8, 0.0)).data(), 1.8 + 0.8 / 4);
    EXPECT_NEAR(*momentum.next(pair(2.0, 0.0), pair(2.6, 0.0)).data(), 2.6 + 0.8 * 2 / 5, 1e-15);
}

TEST(Momentum, EndsWithATurn) {
    Momentum momentum;
    momentum.next(pair(0.0, 0.0), pair(1.0, 0.0));
    momentum.next(pair(1.0, 0.0), pair(1.8, 0.0));
    const UnmixingMatrix turned = momentum.next(pair(2.0, 0.0), pair(2.1, 1.0));
    EXPECT_EQ(turned.data()[0], 2.1);
    EXPECT_EQ(turned.data()[3], 1.0);
}

TEST(Momentum, StartsAgainAfterForgetting) {
    Momentum momentum;
    momentum.next(pair(0.0, 0.0), pair(1.0, 0.0));
    momentum.forget();
    EXPECT_EQ(*momentum.next(pair(1.0, 0.0), pair(1.8, 0.0)).data(), 1.8);
}

// g leaves the saddle at 0 for the fixed point at 1 or -1; plain iteration from 1e-6 takes 173 steps to 0.999.
TEST(Momentum, LeavesASaddleFasterThanThePlainIteration) {
    const auto g = [](double x) { return 1.1 * x - 0.1 * x * x * x; };
    int plain = 0;
    for (double x = 1e-6; x < 0.999; x = g(x)) ++plain;
    Momentum momentum;
    int steps = 0;
    for (double x = 1e-6; x < 0.999; ++steps) {
        ASSERT_LT(steps, 1000);
        x = *momentum.next(pair(x, 0.0), pair(g(x), 0.0)).data();
    }
    EXPECT_LT(2 * steps, plain);
}

} // namespace
} // namespace zn::headless
