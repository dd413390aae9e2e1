#include "fingerprint/unit_range.h"

#include "unit/fingerprint/test_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using testing::Truly;

using Rescaling = void (*)(const float* input, int k, float* output);

Series rescaled(Rescaling rescale, const Series& input) {
    Series output(input.size(), -9.0f);
    rescale(input.data(), static_cast<int>(input.size()), output.data());
    Series inPlace = input;
    rescale(inPlace.data(), static_cast<int>(inPlace.size()), inPlace.data());
    for (std::size_t i = 0; i < output.size(); ++i) EXPECT_TRUE(same(output[i], inPlace[i])) << i;
    return output;
}

const auto isNaN = Truly([](float value) { return std::isnan(value); });

TEST(LogMagnitudeUnitRange, TakesTheMagnitudeOfTheLogarithm) {
    // |ln| of 1/e^3, e, e^2 is 3, 1, 2; less 1, divided by 2.
    const auto e = [](double power) { return static_cast<float>(std::exp(power)); };
    const Series result = rescaled(logMagnitudeUnitRange, {e(-3), e(1), e(2)});
    EXPECT_THAT(result, ElementsAre(FloatEq(1), FloatEq(0), testing::FloatNear(0.5f, 1e-6f)));
}

TEST(LogMagnitudeUnitRange, OfNegativeValuesIsNaNForThoseOnly) {
    const Series result = rescaled(logMagnitudeUnitRange, {1, -2, 20});
    EXPECT_THAT(result, ElementsAre(0, isNaN, 1));
}

TEST(LogMagnitudeUnitRange, StartsWithTheFirstSoThatALeadingNaNSpreads) {
    EXPECT_THAT(rescaled(logMagnitudeUnitRange, {-2, 1, 20}), Each(isNaN));
}

TEST(LogMagnitudeUnitRange, OfMinusZerosIsNaN) {
    EXPECT_THAT(rescaled(logMagnitudeUnitRange, {-0.0f, -0.0f}), Each(isNaN)); // infinity - infinity
}

TEST(LogRatioUnitRange, ReachesFromTheSmallestToTheLargestMagnitude) {
    // ln of 8, 1, 2 over 1, divided by ln 8.
    EXPECT_THAT(rescaled(logRatioUnitRange, {-8, 1, 2}), ElementsAre(1, 0, FloatEq(1.0f / 3)));
}

TEST(LogRatioUnitRange, WithAZeroIsNaNThereAndForTheRest) {
    EXPECT_THAT(rescaled(logRatioUnitRange, {0, 1, 2}), Each(isNaN)); // ln 0 - ln 0 comes first and stays
}

TEST(ExpUnitRange, ReachesFromZeroToOne) {
    const double middle = (std::exp(2.0) - std::exp(1.0)) / (std::exp(3.0) - std::exp(1.0));
    EXPECT_THAT(rescaled(expUnitRange, {1, 3, 2}), ElementsAre(0, 1, FloatEq(static_cast<float>(middle))));
}

TEST(ExpUnitRange, BeyondTheLargestFloatDoesNotFail) {
    EXPECT_THAT(rescaled(expUnitRange, {1000, 0}), ElementsAre(isNaN, 0));
}

TEST(ScaleToLargest, DoesNotMoveTheSmallestToZero) {
    EXPECT_THAT(rescaled(scaleToLargest, {1, 4, 2}), ElementsAre(0.25f, 1, 0.5f));
}

TEST(ScaleToLargest, FollowsTheComparisonsWithNaNs) {
    EXPECT_THAT(rescaled(scaleToLargest, {kNaN, 4, 2}), Each(isNaN));
    EXPECT_THAT(rescaled(scaleToLargest, {2, kNaN, 4}), ElementsAre(0.5f, isNaN, 1));
}

TEST(UnitRange, OfOneOrEqualComponentsIsNaN) {
    for (const Rescaling rescale : {logMagnitudeUnitRange, logRatioUnitRange, expUnitRange}) {
        EXPECT_THAT(rescaled(rescale, {3}), Each(isNaN));
        EXPECT_THAT(rescaled(rescale, {3, 3, 3}), Each(isNaN));
    }
}

TEST(UnitRange, OfNoComponentTouchesNothing) {
    for (const Rescaling rescale : {logMagnitudeUnitRange, logRatioUnitRange, expUnitRange, scaleToLargest}) {
        float untouched = 5;
        rescale(&untouched, 0, &untouched);
        EXPECT_EQ(untouched, 5.0f);
    }
}

} // namespace
} // namespace zn::test
