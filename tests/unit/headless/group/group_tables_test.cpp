// The values of the tables over all runs.
#include "files.h"
#include "headless/failure/failure.h"
#include "headless/group/steps/course_correlations.h"
#include "headless/group/steps/outlying_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::headless {
namespace {

using testing::Each;
using testing::ElementsAre;

TEST(OutlyingValues, LieFarFromTheMedian) {
    // Median 1.025, median absolute deviation 0.075: the limit is 3.5 * 1.4826 * 0.075 = 0.389.
    EXPECT_THAT(outlyingValues({1.0, 1.1, 0.9, 1.05, 0.95, 3.0}), ElementsAre(false, false, false, false, false, true));
    EXPECT_THAT(outlyingValues({1.0, 1.1, 0.9, 1.05, 0.95, 1.4}), Each(false));
    EXPECT_THAT(outlyingValues({1.0, 1.0, 1.0, 1.0, 1.0, 2.0}), Each(false)); // no spread to compare with
}

TEST(OutlyingValues, NeedSixValues) {
    EXPECT_THAT(outlyingValues({1.0, 1.1, 0.9, 1.05, 30.0}), Each(false));
    EXPECT_THAT(outlyingValues({}), testing::IsEmpty());
}

TEST(CourseCorrelations, AreAveragedAsFishersZ) {
    const test::TemporaryFolder folder;
    test::writeFile(folder / "a.tsv", "ICA_00\tICA_01\n1\t1\n-1\t-1\n1\t-1\n-1\t1\n");         // r = 0
    test::writeFile(folder / "b.tsv", "ICA_00\tICA_01\n1\t1.4\n-1\t0.2\n1\t-0.2\n-1\t-1.4\n"); // r = 0.6
    const auto pairs = courseCorrelations({folder / "a.tsv", folder / "b.tsv"});
    ASSERT_EQ(pairs.size(), 1U);
    EXPECT_NEAR(pairs[0].meanR, 1.0 / 3.0, 1e-6); // tanh(atanh(0.6) / 2), with atanh(0.6) = ln 2
    EXPECT_NEAR(pairs[0].sdOfZ, 0.490129, 1e-6);  // ln 2 / sqrt(2)
}

TEST(CourseCorrelations, NeedTheSameColumnsInAllRuns) {
    const test::TemporaryFolder folder;
    test::writeFile(folder / "a.tsv", "ICA_00\tICA_01\n1\t1\n-1\t0\n");
    test::writeFile(folder / "b.tsv", "ICA_00\tICA_01\tICA_02\n1\t1\t2\n-1\t0\t3\n");
    EXPECT_THROW(courseCorrelations({folder / "a.tsv", folder / "b.tsv"}), Failure);
    EXPECT_THROW(courseCorrelations({folder / "b.tsv", folder / "a.tsv"}), Failure);
}

} // namespace
} // namespace zn::headless
