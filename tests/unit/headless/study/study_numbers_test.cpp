// Capacity, summary and outliers of a study; expected values worked out by hand.
#include "headless/study/capacity.h"
#include "headless/study/outliers.h"
#include "headless/study/study_summary.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(Capacity, AdmitsRunsWhileProcessorsAndMemoryLast) {
    const Capacity capacity{4, 2, 1000};
    EXPECT_TRUE(capacity.fits(1, 600, 400));
    EXPECT_FALSE(capacity.fits(1, 600, 401));
    EXPECT_FALSE(capacity.fits(2, 0, 1));
}

TEST(Capacity, AdmitsARunThatIsTooLargeOnlyAlone) {
    const Capacity capacity{4, 1, 1000};
    EXPECT_TRUE(capacity.fits(0, 0, 5000));
    EXPECT_FALSE(capacity.fits(1, 10, 5000));
}

TEST(Capacity, SharesProcessorsAmongTheRunsThatFit) {
    StudyOptions options;
    options.processors = 8;
    options.memoryBytes = 1000;
    EXPECT_EQ(capacityFor(options, 100, 10).threads, 1);  // eight at once
    EXPECT_EQ(capacityFor(options, 2, 10).threads, 4);    // two at once
    EXPECT_EQ(capacityFor(options, 100, 400).threads, 4); // two fit into the memory
    EXPECT_EQ(capacityFor(options, 100, 5000).threads, 8);
    options.run.control.threads = 3;
    EXPECT_EQ(capacityFor(options, 100, 10).threads, 3);
}

RunOutcome outcome(int status) {
    RunOutcome result;
    result.status = status;
    return result;
}

TEST(StudySummary, NamesTheRunsWithoutResult) {
    StudySummary summary(4);
    summary.add("sub-01", outcome(0));
    summary.add("sub-02", outcome(4));
    summary.add("sub-03", outcome(3));
    summary.add("sub-04", outcome(0));
    EXPECT_EQ(summary.text(), "2 of 4 runs done, 1 with fewer components, 1 without result: sub-03");
}

TEST(StudySummary, NamesRunsThatKeepAnEarlierResultApart) {
    StudySummary summary(2);
    RunOutcome failed = outcome(3);
    summary.add("sub-01", failed);
    failed.keepsEarlier = true;
    summary.add("sub-02", failed);
    EXPECT_EQ(summary.text(), "0 of 2 runs done, 1 without result: sub-01, 1 without a new result: sub-02");
    EXPECT_EQ(summary.status(), ExitStatus::kInput);
}

TEST(StudySummary, CountsARepeatedRunOnce) {
    StudySummary summary(1);
    summary.add("sub-01", outcome(137));
    summary.add("sub-01", outcome(0));
    EXPECT_EQ(summary.text(), "1 of 1 run done");
    EXPECT_EQ(summary.status(), ExitStatus::kDone);
}

TEST(StudySummary, HasTheSmallestStatusOfTheRunsWithoutResult) {
    StudySummary summary(4);
    EXPECT_EQ(static_cast<int>(summary.status()), 0);
    summary.add("a", outcome(4));
    EXPECT_EQ(static_cast<int>(summary.status()), 4);
    summary.add("b", outcome(137));
    EXPECT_EQ(static_cast<int>(summary.status()), 137);
    summary.add("c", outcome(5));
    summary.add("d", outcome(4));
    EXPECT_EQ(static_cast<int>(summary.status()), 5);
    summary.add("a", outcome(3));
    EXPECT_EQ(static_cast<int>(summary.status()), 3);
}

TEST(Outliers, LieMoreThanThreeDeviationsFromTheMedian) {
    // Median 4; absolute deviations 3, 2, 1, 0, 1, 2, 96 with median 2; 3 x 1.4826 x 2 = 8.8956.
    const Spread spread = spreadOf({1, 2, 3, 4, 5, 6, 100});
    EXPECT_DOUBLE_EQ(spread.median, 4.0);
    EXPECT_DOUBLE_EQ(spread.deviation, 2.9652);
    EXPECT_FALSE(spread.excludes(12.89));
    EXPECT_TRUE(spread.excludes(12.90));
    EXPECT_TRUE(spread.excludes(-4.90));
}

TEST(Outliers, AreAllOtherValuesWhenMostAreEqual) {
    const Spread spread = spreadOf({2, 2, 2, 0.8});
    EXPECT_FALSE(spread.excludes(2));
    EXPECT_TRUE(spread.excludes(0.8));
}

TEST(Outliers, DoNotExistWithoutValues) {
    EXPECT_FALSE(spreadOf({}).excludes(5));
}

} // namespace

} // namespace zn::test
