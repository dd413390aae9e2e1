// What a run prints during the analysis and at the end, and what --quiet suppresses.
#include "cli/command.h"
#include "files.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

class TerminalOutput : public testing::Test {
protected:
    TerminalOutput() {
        const CommandResult made =
            znica({"simulate", "--size", "tiny", "--sources", "3", "--out", (folder / "s").string()});
        EXPECT_EQ(made.status, 0) << made.err;
    }
    std::vector<std::string> arguments(const std::vector<std::string>& options = {}) {
        const std::string stem = (folder / "s/sub-sim_task-blocks_").string();
        std::vector<std::string> result = {"run",          stem + "bold.nii.gz",
                                           "--mask",       stem + "desc-brain_mask.nii.gz",
                                           "--components", "2",
                                           "--seed",       "1",
                                           "--out",        (folder / "out").string()};
        result.insert(result.end(), options.begin(), options.end());
        return result;
    }

    // Everything that the command writes to a terminal, which `script` provides.
    std::string onATerminal(int columns) {
        std::string command = "stty cols " + std::to_string(columns) + "; " + ZNICA_FILE;
        for (const std::string& argument : arguments()) command += " '" + argument + "'";
        const auto screen = folder / "screen.txt";
        EXPECT_EQ(std::system(("TERM=xterm script -qec \"" + command + "\" /dev/null >" + screen.string()).c_str()), 0);
        return textOf(screen);
    }

    TemporaryFolder folder;
};

TEST_F(TerminalOutput, PipedHasOneLinePerStageAndFiveLinesAtTheEnd) {
    const CommandResult result = znica(arguments());
    EXPECT_EQ(result.err, "");
    std::istringstream stream(result.out);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    EXPECT_THAT(lines,
                ElementsAre("Input: 20x24x18 voxels, 80 volumes, TR 2 s (sub-sim_task-blocks_bold.json).",
                            MatchesRegex("Memory: about [0-9.]+ GiB at the peak, for [0-9]+ voxels; [0-9.]+ GiB are "
                                         "free\\."),
                            "reading", MatchesRegex("Mask: [0-9]+ of 8640 voxels, from the given mask\\."),
                            "covariance", "eigenvalues", "components",
                            MatchesRegex("component 1 of 2, [0-9]+ iterations, about [0-9]+ s left"),
                            MatchesRegex("component 2 of 2, [0-9]+ iterations"), "fingerprint", "writing",
                            MatchesRegex("[0-9]+ voxels x 80 volumes analysed"), "2 of 2 components found",
                            MatchesRegex("[0-9.]+ % of the variance over time kept \\(the mean image not counted\\)"),
                            MatchesRegex("[0-9.]+ s, of which [0-9.]+ s in the plug-in; peak memory [0-9]+ MiB"),
                            "result: " + (folder / "out").string()));
}

TEST_F(TerminalOutput, QuietPrintsNothing) {
    const CommandResult result = znica(arguments({"--quiet"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out + result.err, "");
}

TEST_F(TerminalOutput, ThatIsNoLongerReadDoesNotAffectTheResult) {
    const CommandResult result = znica(arguments(), {{}, {}, kToNobody});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("out", "s"));
}

TEST_F(TerminalOutput, VerboseRepeatsTheLog) {
    const CommandResult result = znica(arguments({"--verbose"}));
    EXPECT_THAT(result.out, testing::StartsWith(textOf(folder / "out/log.txt")));
}

TEST_F(TerminalOutput, TheIterationsAgreeWithThePluginsLog) {
    const CommandResult result = znica(arguments());
    const auto facts = nlohmann::json::parse(textOf(folder / "out/sub-sim_task-blocks_desc-ICA_decomposition.json"));
    for (std::size_t i = 0; i < 2; ++i) {
        const int counted = facts["Components"][i]["Iterations"].get<int>();
        EXPECT_THAT(result.out, HasSubstr("component " + std::to_string(i + 1) + " of 2, " + std::to_string(counted) +
                                          " iterations"));
    }
}

TEST_F(TerminalOutput, ATerminalGetsABarThatIsRemovedAtTheEnd) {
    const std::string text = onATerminal(100);
    EXPECT_THAT(text, HasSubstr("\r\033[Kcomponent 1 of 2 [........................], 0 iterations"));
    EXPECT_THAT(text, HasSubstr("\r\033[Kcomponent 2 of 2 [############............], 0 iterations"));
    EXPECT_THAT(text, HasSubstr("\r\033[K")); // the bar is cleared before the summary
    EXPECT_LT(text.rfind("\033[K"), text.find(" voxels x 80 volumes"));
    EXPECT_THAT(text.substr(text.rfind("\033[K") + 3), MatchesRegex("[0-9]+ voxels x (.|\r|\n)*"));
}

TEST_F(TerminalOutput, ABarStaysWithinANarrowTerminal) {
    const std::string text = onATerminal(30);
    EXPECT_THAT(text, HasSubstr("\r\033[Kcomponent 1 of 2 [........."));
    for (std::size_t at = 0; (at = text.find("\033[K", at)) != text.npos;) {
        at += 3;
        const std::size_t length = text.find_first_of("\r\n", at) - at;
        if (text.compare(at, 9, "component") != 0) continue;
        EXPECT_LT(length, 30U) << text.substr(at, length);
    }
}

} // namespace
} // namespace zn::test
