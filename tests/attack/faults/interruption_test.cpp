// Signals at awkward moments: the exit status, the one message and the result agree.
#include "attack/faults/scenario.h"
#include "attack/faults/verdict.h"

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

constexpr char kNoResult[] = "znica: interrupted; no result was written.\n";
constexpr char kResult[] = "znica: interrupted; the result had been written already.\n";

// The image library must not print, so standard error leads nowhere while it reads a header.
TEST(Interruption, IsReportedWhileTheImageLibraryReads) {
    Scenario scenario(planNamed("Run"));
    const std::uint64_t at = scenario.numberOf(Call::kRead, "/bold.nii.gz", 2);
    const Ending ending = scenario.run({Call::kRead, at, "signal-wait", SIGTERM});
    EXPECT_EQ(ending.status, 128 + SIGTERM);
    EXPECT_EQ(ending.err, kNoResult);
}

// The run must not go on without its folder, and then report success or a failure of its own.
TEST(Interruption, IsFollowedByNothingElse) {
    Scenario scenario(planNamed("Run"));
    const std::uint64_t syncs = scenario.calls()[static_cast<std::size_t>(Call::kSync)];
    for (std::uint64_t at = 1; at <= 3 * syncs; ++at) {
        const Ending ending = scenario.run({Call::kSync, 1 + at % syncs, "signal", SIGINT});
        const bool written = judge(scenario, {}, ending).found == Found::kNew;
        if (ending.status == 0 && written) continue; // the command ended before the signal was taken up
        EXPECT_EQ(ending.status, 128 + SIGINT);
        EXPECT_EQ(ending.err, written ? kResult : kNoResult);
    }
}

// Just before the folder takes its name, it is too late: it does.
TEST(Interruption, AtTheLastRenameSaysThatThereIsAResult) {
    for (const char* name : {"Run", "RunInPlaceOfAResult", "Compare", "Report"}) {
        if (!REPORT_IS_BUILT && std::string(name) == "Report") continue;
        Scenario scenario(planNamed(name));
        const std::uint64_t renames = scenario.calls()[static_cast<std::size_t>(Call::kRename)];
        for (const char* kind : {"signal", "signal-after"}) {
            const Ending ending = scenario.run({Call::kRename, renames, kind, SIGTERM});
            EXPECT_EQ(judge(scenario, {}, ending).found, Found::kNew) << name << ending.err;
            if (ending.status == 0) continue; // the command ended before the signal was taken up
            EXPECT_EQ(ending.status, 128 + SIGTERM) << name;
            EXPECT_EQ(ending.err, kResult) << name;
        }
    }
}

} // namespace
} // namespace zn::test
