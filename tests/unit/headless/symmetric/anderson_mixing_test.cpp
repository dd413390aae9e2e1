#include "headless/symmetric/anderson_mixing.h"

#include <gtest/gtest.h>

namespace zn::headless {
namespace {

UnmixingMatrix single(double value) {
    UnmixingMatrix result(1);
    *result.data() = value;
    return result;
}

// g(x) = x / 2 + 1 has the fixed point 2; two values of a straight line determine it.
TEST(AndersonMixing, SolvesALinearEquationFromTwoValues) {
    AndersonMixing mixing;
    EXPECT_EQ(*mixing.next(single(0.0), single(1.0)).data(), 1.0) << "nothing is known yet";
    EXPECT_NEAR(*mixing.next(single(1.0), single(1.5)).data(), 2.0, 1e-14);
}

TEST(AndersonMixing, StaysAtAFixedPoint) {
    AndersonMixing mixing;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(*mixing.next(single(2.0), single(2.0)).data(), 2.0);
}

TEST(AndersonMixing, StartsAgainAfterForgetting) {
    AndersonMixing mixing;
    mixing.next(single(0.0), single(1.0));
    mixing.forget();
    EXPECT_EQ(*mixing.next(single(1.0), single(1.5)).data(), 1.5);
}

} // namespace
} // namespace zn::headless
