#include "fingerprint/hamming_window.h"

#include "unit/fingerprint/test_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

using testing::Pointwise;

Series window(int length) {
    Series values(static_cast<std::size_t>(length), -1.0f);
    hammingWindow(length, values.data());
    return values;
}

TEST(HammingWindow, OfOddAndEvenLengthMatchesNumpy) {
    EXPECT_THAT(window(5), Pointwise(testing::FloatNear(1e-6f), Series{0.08f, 0.54f, 1.0f, 0.54f, 0.08f}));
    EXPECT_THAT(window(6), Pointwise(testing::FloatNear(1e-6f),
                                     Series{0.08f, 0.39785218f, 0.91214782f, 0.91214782f, 0.39785218f, 0.08f}));
}

TEST(HammingWindow, IsItsOwnMirrorImage) {
    for (const int length : {2, 3, 88, 89, 300}) {
        const Series values = window(length);
        EXPECT_EQ(values, Series(values.rbegin(), values.rend())) << length;
    }
}

TEST(HammingWindow, OfOneValueIsNaN) {
    EXPECT_TRUE(std::isnan(window(1)[0]));
}

TEST(HammingWindow, OfLengthZeroWritesNothing) {
    float untouched = 5;
    hammingWindow(0, &untouched);
    EXPECT_EQ(untouched, 5.0f);
}

} // namespace
} // namespace zn::test
