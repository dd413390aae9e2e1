#include "headless/denoise/verdicts.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::vector<std::string> kComponents = {"ICA_00", "ICA_01", "ICA_02"};

class Labels : public testing::Test {
protected:
    std::vector<Verdict> read(const std::string& text) {
        writeFile(folder / "l.tsv", text);
        return readVerdicts(folder / "l.tsv", kComponents);
    }
    std::string refusalOf(const std::string& text) {
        try {
            read(text);
            return "accepted";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status(), ExitStatus::kInput);
            return failure.what();
        }
    }

    TemporaryFolder folder;
};

TEST_F(Labels, RejectNoiseAndKeepTheRest) {
    const auto verdicts = read("component\tclassification\tnote\nICA_02\tnoise\trim\nICA_00\tunsure\tn/a\n");
    EXPECT_FALSE(verdicts[0].rejected);
    EXPECT_EQ(verdicts[0].label, "unsure");
    EXPECT_EQ(verdicts[0].reason, "");
    EXPECT_FALSE(verdicts[1].rejected);
    EXPECT_EQ(verdicts[1].label, "");
    EXPECT_TRUE(verdicts[2].rejected);
    EXPECT_EQ(verdicts[2].reason, "rim");
}

TEST_F(Labels, HaveTheirNotesWithoutTheQuotesOfASpreadsheet) {
    const auto verdicts = read("component\tclassification\tnote\nICA_01\t\"noise\"\t\"an \"\"odd\"\" rim\"\n");
    EXPECT_TRUE(verdicts[1].rejected);
    EXPECT_EQ(verdicts[1].reason, "an \"odd\" rim");
}

TEST_F(Labels, MayBeTheClassificationOfTheMetricsTable) {
    const auto verdicts = read("component\tskewness\tclassification\nICA_00\t0.5\tn/a\nICA_01\t0.5\tnoise\n");
    EXPECT_FALSE(verdicts[0].rejected);
    EXPECT_TRUE(verdicts[1].rejected);
}

TEST_F(Labels, OfAnotherKindAreRefused) {
    EXPECT_THAT(refusalOf("component\tclassification\nICA_00\tnoisy\n"),
                AllOf(StartsWith((folder / "l.tsv").string() + ", line 2, column \"classification\","),
                      EndsWith(" holds the label \"noisy\"; the labels are signal, noise, unsure and n/a.")));
}

TEST_F(Labels, OfAnUnknownComponentAreRefused) {
    EXPECT_THAT(refusalOf("component\tclassification\nICA_07\tnoise\n"),
                HasSubstr("names ICA_07, but the result has ICA_00 to ICA_02; use the labels of this result."));
}

TEST_F(Labels, OfOneComponentTwiceAreRefused) {
    EXPECT_THAT(refusalOf("component\tclassification\nICA_01\tnoise\nICA_01\tsignal\n"),
                HasSubstr("names ICA_01 a second time"));
}

TEST_F(Labels, WithoutTheirColumnsAreRefused) {
    EXPECT_THAT(refusalOf("name\tlabel\nICA_01\tnoise\n"), HasSubstr(" has no column \"component\"; --labels takes "));
}

TEST(RejectedComponents, AreGivenByNumberFromOneOrByName) {
    const auto verdicts = verdictsFor({"3", "ICA_00"}, kComponents);
    EXPECT_TRUE(verdicts[0].rejected);
    EXPECT_FALSE(verdicts[1].rejected);
    EXPECT_TRUE(verdicts[2].rejected);
}

TEST(RejectedComponents, ThatDoNotExistAreRefused) {
    for (const char* wanted : {"0", "4", "ICA_03", "IC 1", "-1", "1.5", "99999999999999999999999"}) {
        EXPECT_THROW(verdictsFor({wanted}, kComponents), Failure) << wanted;
    }
}

TEST(Verdicts, AreRejectedByNumberRangeOrName) {
    const std::vector<std::string> components = {"ICA_00", "ICA_01", "ICA_02", "ICA_03", "ICA_04"};
    const auto rejected = [&](const std::vector<std::string>& list) {
        std::string text;
        for (const Verdict& verdict : verdictsFor(list, components)) text += verdict.rejected ? '1' : '0';
        return text;
    };
    EXPECT_EQ(rejected({"2-4", "ICA_00"}), "11110");
    EXPECT_EQ(rejected({"5-5"}), "00001");
    for (const char* wrong : {"3-2", "0-2", "4-6", "-2", "2-", "1-2-3", "0", "6"}) {
        EXPECT_THROW(rejected({wrong}), Failure) << wrong;
    }
}

} // namespace
} // namespace zn::test
