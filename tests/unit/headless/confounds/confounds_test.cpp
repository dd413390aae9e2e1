#include "headless/confounds/confound_match.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsNan;

class ConfoundsInAFile : public testing::Test {
protected:
    Confounds read(const std::string& text, const std::vector<std::string>& columns = {},
                   const AnalysedVolumes& volumes = {4, 0, 2.0}) {
        writeFile(folder / "c.tsv", text);
        return readConfounds(folder / "c.tsv", columns, volumes);
    }
    std::string refusalOf(const std::string& text, const std::vector<std::string>& columns = {}) {
        try {
            read(text, columns);
            return "accepted";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status(), ExitStatus::kInput);
            return failure.what();
        }
    }
    // Derivatives have no value in the first row, and an outlier column may be 0 throughout.
    const std::string table = "trans_x\ttrans_x_derivative1\toutlier00\tcsf\n"
                              "0.1\tn/a\t0\t5\n0.2\t0.1\t0\t6\n0.1\t-0.1\t0\t5\n0.4\t0.3\t0\t4\n";
    TemporaryFolder folder;
};

TEST_F(ConfoundsInAFile, MissingValuesAreKeptAsNanAndConstantColumnsIgnored) {
    const Confounds confounds = read(table);
    EXPECT_THAT(confounds.names, ElementsAre("trans_x", "trans_x_derivative1", "csf"));
    EXPECT_THAT(confounds.ignored, ElementsAre("outlier00"));
    EXPECT_THAT(confounds.values[1], ElementsAre(IsNan(), 0.1f, -0.1f, 0.3f));
}

TEST_F(ConfoundsInAFile, ColumnsCanBeChosen) {
    EXPECT_THAT(read(table, {"csf", "trans_x"}).names, ElementsAre("csf", "trans_x"));
    EXPECT_THAT(refusalOf(table, {"csf", "wm"}), HasSubstr("has no column \"wm\""));
    EXPECT_THAT(refusalOf(table, {"outlier00"}), HasSubstr("has no confound that varies over the analysed volumes"));
}

TEST_F(ConfoundsInAFile, NoColumnIsReadTwice) {
    const std::string twice = "csf\tcsf\n1\t1\n2\t1\n3\t0\n4\t2\n";
    EXPECT_THAT(refusalOf(twice), HasSubstr("has two columns \"csf\"; rename one."));
    EXPECT_EQ(refusalOf(table, {"csf", "trans_x", "csf"}), "--columns names csf twice.");
    EXPECT_THAT(refusalOf(twice, {"csf"}), HasSubstr("has two columns \"csf\"; rename one."));
}

TEST_F(ConfoundsInAFile, RowsOfDummyScansAreOmitted) {
    EXPECT_THAT(read(table, {"csf"}, {4, 1, 2.0}).values[0], ElementsAre(6.0f, 5.0f, 4.0f));
    EXPECT_THAT(read(table, {"csf"}, {7, 3, 2.0}).values[0], ElementsAre(5.0f, 6.0f, 5.0f, 4.0f));
    EXPECT_THAT(refusalOf("a\n1\n2\n3\n"), HasSubstr("has 3 rows of confounds, but the data have 4 volumes"));
}

TEST_F(ConfoundsInAFile, CellsAreNumbersOrMissing) {
    EXPECT_THAT(refusalOf("a\n1\n2\nthree\n4\n"), HasSubstr("line 4, column \"a\", holds \"three\""));
    EXPECT_EQ(read("a\tb\n1\tone\n2\ttwo\n1\tone\n2\ttwo\n", {"a"}).names.size(), 1U); // b is not asked for
}

// numpy.corrcoef([1, 2, 4, 3], [1, 3, 2, 2]) and, over the last three, numpy.corrcoef([2, 4, 3], [9, 2, 5]).
TEST(ConfoundMatch, IsTheLargestAbsoluteCorrelationOverTheVolumesWithValues) {
    Confounds confounds{{"a", "b"}, {{1, 3, 2, 2}, {NAN, 9, 2, 5}}, {}};
    const std::vector<float> course = {1, 2, 4, 3};
    const ConfoundMatch match = strongestConfound(course, confounds);
    EXPECT_EQ(match.confound, 1);
    EXPECT_NEAR(match.r, -0.9966158955401239, 1e-12);
    confounds.values.pop_back();
    EXPECT_NEAR(strongestConfound(course, confounds).r, 0.31622776601683794, 1e-12);
}

TEST(ConfoundMatch, OfATimeCourseWithoutValuesIsNone) {
    const Confounds confounds{{"a"}, {{1, 3, 2, 2}}, {}};
    EXPECT_EQ(strongestConfound(std::vector<float>{NAN, NAN, NAN, NAN}, confounds).confound, -1);
    EXPECT_EQ(strongestConfound(std::vector<float>{2, 2, 2, 2}, confounds).confound, -1);
}

} // namespace
} // namespace zn::test
