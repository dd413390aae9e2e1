#include "headless/denoise/removal.h"

#include <cmath>
#include <numeric>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::DoubleNear;
using testing::Pointwise;

using Course = std::vector<double>;

constexpr double kPartTolerance = 1e-12;

// Two courses of unit length with a product of 1/2.
const Course kNoise = unitCourse({1, -1, 0, 0});
const Course kSignal = unitCourse({1, 0, -1, 0});
const Course kDrift = unitCourse({1, 1, 1, -3}); // orthogonal to both

Course combined(double noise, double signal, double drift = 0.0) {
    Course course(4);
    for (std::size_t t = 0; t < 4; ++t) course[t] = noise * kNoise[t] + signal * kSignal[t] + drift * kDrift[t];
    return course;
}

// What is subtracted from a course.
Course removedFrom(const Course& course, const Removal& removal) {
    Course part(course.size());
    for (int k = 0; k < removal.count; ++k) {
        const auto row = k * removal.volumes;
        const double coefficient = std::inner_product(course.begin(), course.end(), removal.weights.begin() + row, 0.0);
        for (std::size_t t = 0; t < part.size(); ++t) {
            part[t] += coefficient * removal.columns[static_cast<std::size_t>(row) + t];
        }
    }
    return part;
}

const Regressors kOneOfTwo = {4, {kNoise}, {kSignal}, {}};

TEST(Removal, NonAggressiveTakesWhatTheFitOfAllAscribesToNoise) {
    const Removal removal = makeRemoval(kOneOfTwo, DenoiseMethod::kNonAggressive);
    EXPECT_THAT(removedFrom(combined(2, 3), removal), Pointwise(DoubleNear(kPartTolerance), combined(2, 0)));
    EXPECT_EQ(removal.designColumns, 2);
    EXPECT_EQ(removal.designRank, 2);
    EXPECT_EQ(removal.lostDegrees, 1);
}

TEST(Removal, AggressiveTakesAlsoWhatNoiseSharesWithSignal) {
    // The product of noise with 2 noise + 3 signal is 2 + 3 / 2.
    const Removal removal = makeRemoval(kOneOfTwo, DenoiseMethod::kAggressive);
    EXPECT_THAT(removedFrom(combined(2, 3), removal), Pointwise(DoubleNear(kPartTolerance), combined(3.5, 0)));
}

TEST(Removal, OrthogonalisedTakesOnlyWhatNoiseDoesNotShare) {
    // Noise without signal is noise - signal / 2; its squared length is 3/4 and its product with the course 2 * 3/4.
    const Removal removal = makeRemoval(kOneOfTwo, DenoiseMethod::kOrthogonalised);
    EXPECT_THAT(removedFrom(combined(2, 3), removal), Pointwise(DoubleNear(kPartTolerance), combined(2, -1)));
    EXPECT_THAT(removedFrom(kSignal, removal), Pointwise(DoubleNear(kPartTolerance), Course(4)));
}

TEST(Removal, TakesConfoundsInTheSameRegression) {
    for (const DenoiseMethod method :
         {DenoiseMethod::kNonAggressive, DenoiseMethod::kAggressive, DenoiseMethod::kOrthogonalised}) {
        const Removal removal = makeRemoval({4, {}, {kSignal}, {kDrift}}, method);
        EXPECT_THAT(removedFrom(combined(0, 3, 5), removal), Pointwise(DoubleNear(kPartTolerance), combined(0, 0, 5)));
        EXPECT_EQ(removal.lostDegrees, 1);
    }
}

// Of two orthogonal parts of equal length each has half of the squares.
TEST(Removal, KnowsHowMuchOfAKeptCourseConfoundsExplain) {
    const UnitCourse mixed = unitCourse(combined(1, 0, 1));
    EXPECT_NEAR(largestNuisanceShare({4, {}, {kSignal, mixed}, {kDrift}}), 0.5, kPartTolerance);
    EXPECT_NEAR(largestNuisanceShare({4, {}, {kSignal}, {kDrift}}), 0.0, kPartTolerance);
    EXPECT_EQ(largestNuisanceShare({4, {}, {kSignal}, {}}), 0.0);
}

TEST(Removal, SharesWhatDependentColumnsHaveInCommon) {
    // Noise twice, once rejected and once kept: each gets half.
    const Removal removal = makeRemoval({4, {kNoise}, {kNoise}, {}}, DenoiseMethod::kNonAggressive);
    EXPECT_THAT(removedFrom(combined(2, 0), removal), Pointwise(DoubleNear(kPartTolerance), combined(1, 0)));
    EXPECT_EQ(removal.designColumns, 2);
    EXPECT_EQ(removal.designRank, 1);
}

TEST(Removal, CountsDependentColumnsOnceAmongTheDegreesLost) {
    const Removal removal = makeRemoval({4, {kNoise}, {}, {kNoise, kDrift}}, DenoiseMethod::kAggressive);
    EXPECT_THAT(removedFrom(combined(2, 0, 5), removal), Pointwise(DoubleNear(kPartTolerance), combined(2, 0, 5)));
    EXPECT_EQ(removal.lostDegrees, 2);
}

TEST(Removal, OfNoiseThatSignalExplainsEntirelyIsNothingWhenOrthogonalised) {
    const Removal removal = makeRemoval({4, {kSignal}, {kNoise, kSignal}, {}}, DenoiseMethod::kOrthogonalised);
    EXPECT_THAT(removedFrom(combined(2, 3), removal), Pointwise(DoubleNear(kPartTolerance), Course(4)));
    EXPECT_EQ(removal.lostDegrees, 0);
}

TEST(Removal, OfNothingIsNothing) {
    const Removal removal = makeRemoval({4, {}, {kSignal}, {}}, DenoiseMethod::kNonAggressive);
    EXPECT_EQ(removal.count, 0);
    EXPECT_EQ(removal.lostDegrees, 0);
}

TEST(UnitCourse, HasNoMeanAndUnitLengthWhateverTheScale) {
    const double root = 1.0 / std::sqrt(2.0);
    for (const double scale : {1.0, 1e-9, 1e9}) {
        EXPECT_THAT(unitCourse({4 * scale, 5 * scale, 6 * scale}),
                    Pointwise(DoubleNear(1e-9), std::vector<double>{-root, 0.0, root}));
    }
    EXPECT_THAT(unitCourse({0.1, 0.1, 0.1}), Pointwise(DoubleNear(0.0), std::vector<double>{0.0, 0.0, 0.0}));
}

} // namespace
} // namespace zn::test
