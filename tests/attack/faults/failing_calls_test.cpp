// Single failures of the system at places where znica once drew the wrong conclusion.
#include "attack/faults/scenario.h"
#include "attack/faults/verdict.h"

#include <cerrno>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class FailingCalls : public testing::Test {
protected:
    // Lets the call on a file that ends in `file` fail and expects the earlier state and one sentence.
    std::string complaintAbout(const std::string& plan, Call call, const std::string& file, int error,
                               int occurrence = 1) {
        Scenario scenario(planNamed(plan));
        const Fault fault{call, scenario.numberOf(call, file, occurrence), "fail", error};
        EXPECT_GE(fault.at, 1U) << "no such call";
        const Ending ending = scenario.run(fault);
        EXPECT_EQ(ending.status, 1);
        const Verdict verdict = judge(scenario, fault, ending);
        EXPECT_EQ(verdict.complaint, "");
        EXPECT_EQ(verdict.found, Found::kEarlier);
        return ending.err;
    }
};

// The plug-in silently passes over a file that it cannot open.
TEST_F(FailingCalls, OfThePluginLeaveNoResultWithoutAFile) {
    for (const char* name : {"ICA.vox", "Covariance.txt", "bold.eig", "bold_ICA.rtc", "ParamsMatrix.txt"}) {
        const std::string file = std::string("/plugin/") + name;
        EXPECT_THAT(complaintAbout("Run", Call::kOpen, file, ENOSPC), HasSubstr(file + " was not written completely"));
    }
}

TEST_F(FailingCalls, WhileReadingBackLeaveNoResultWithoutEigenvalues) {
    EXPECT_THAT(complaintAbout("Run", Call::kRead, "/plugin/bold.eig", EIO),
                EndsWith("/out/plugin/bold.eig cannot be read back; check its disk.\n"));
    EXPECT_THAT(complaintAbout("Run", Call::kRead, "/plugin/ICA.vox", EIO),
                EndsWith("/out/plugin/ICA.vox cannot be read back; check its disk.\n"));
}

// The log of the second run, too.
TEST_F(FailingCalls, OfTheLogOfARepeatAreNoticed) {
    Scenario scenario(planNamed("RunWithRepeats"));
    const std::uint64_t writes = scenario.calls()[static_cast<std::size_t>(Call::kWrite)];
    int tried = 0;
    for (int occurrence = 1; scenario.numberOf(Call::kWrite, "/log.txt", occurrence) != 0; occurrence += 7, ++tried) {
        EXPECT_THAT(complaintAbout("RunWithRepeats", Call::kWrite, "/log.txt", ENOSPC, occurrence),
                    HasSubstr("/log.txt cannot be written"));
    }
    EXPECT_GE(tried, 3) << "of " << writes << " writes";
}

TEST_F(FailingCalls, OnFoldersNameTheFolder) {
    const std::string err = complaintAbout("Run", Call::kMkdir, "/plugin/", EACCES);
    EXPECT_THAT(err, StartsWith("znica: /"));
    EXPECT_THAT(err, EndsWith("/out/plugin/ cannot be used: Permission denied; check its permissions and its disk.\n"));
}

// What cannot be listed is neither empty nor a result.
TEST_F(FailingCalls, WhileListingTheEarlierResultKeepIt) {
    Scenario scenario(planNamed("RunInPlaceOfAResult"));
    int refused = 0;
    for (int occurrence = 1;; ++occurrence) {
        const Fault fault{Call::kOpen, scenario.numberOf(Call::kOpen, "/out", occurrence), "fail", EACCES};
        if (fault.at == 0) break;
        const Ending ending = scenario.run(fault);
        EXPECT_EQ(judge(scenario, fault, ending).complaint, "");
        refused += ending.err.find("/out cannot be used: Permission denied") != std::string::npos;
    }
    EXPECT_GE(refused, 3);
}

// Putting the earlier entries back must not need what has run out.
TEST_F(FailingCalls, WithoutDescriptorsDoNotLoseTheEarlierResult) {
    Scenario scenario(planNamed("RunInPlaceOfTheCurrentFolder"));
    const std::uint64_t opens = scenario.calls()[static_cast<std::size_t>(Call::kOpen)];
    for (std::uint64_t at = 1; at <= opens; ++at) {
        const Fault fault{Call::kOpen, at, "fail", EMFILE, true};
        const Ending ending = scenario.run(fault);
        EXPECT_EQ(judge(scenario, fault, ending).complaint, "") << at << ending.err;
    }
}

TEST_F(FailingCalls, OfTheTemplateNameIt) {
    if (!REPORT_IS_BUILT) GTEST_SKIP() << "built without the report";
    Scenario scenario(planNamed("RunWithPage"));
    const Fault fault{Call::kRead, scenario.numberOf(Call::kRead, "/report-template.html", 2), "fail", EIO};
    const Ending ending = scenario.run(fault);
    EXPECT_EQ(ending.status, 0);
    EXPECT_THAT(ending.err, EndsWith("/report-template.html cannot be read; check its disk.\n"));
    EXPECT_EQ(judge(scenario, fault, ending).found, Found::kWithoutPage);
}

} // namespace
} // namespace zn::test
