// A run that the user interrupts during the extraction of a component.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Interrupt : public testing::Test {
protected:
    Interrupt() { writeFile(folder / "bold.nii", plainSeries(24).bytes()); }

    // The real plug-in, with a convergence threshold that no component ever reaches.
    std::vector<std::string> endlessRun() {
        return {"run",
                (folder / "bold.nii").string(),
                "--components",
                "6",
                "--epsilon",
                "1e-30",
                "--max-iterations",
                "100000000",
                "--out",
                (folder / "out").string()};
    }
    bool searching() {
        std::error_code vanished;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path(), vanished)) {
            if (entry.path().filename() == "log.txt" &&
                textOf(entry.path()).find("Running FastICA") != std::string::npos) {
                return true;
            }
        }
        return false;
    }
    void waitForTheSearch() {
        for (int i = 0; i < 1000 && !searching(); ++i) std::this_thread::sleep_for(10ms);
        EXPECT_TRUE(searching()) << "the extraction never started";
    }
    // Interrupts a running command, which ends within a second. A busy machine may need a few more.
    CommandResult interrupted(const std::vector<std::string>& arguments, int signal) {
        RunningCommand running(arguments, {});
        waitForTheSearch();
        const auto start = std::chrono::steady_clock::now();
        CommandResult result = running.end(signal);
        EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
        return result;
    }

    TemporaryFolder folder;
};

TEST_F(Interrupt, EndsTheRunSoonAndLeavesNothing) {
    for (const auto& [signal, status] : {std::pair(SIGINT, 130), {SIGQUIT, 131}, {SIGTERM, 143}}) {
        const CommandResult result = interrupted(endlessRun(), signal);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.err, "znica: interrupted; no result was written.\n");
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("bold.nii"));
    }
}

TEST_F(Interrupt, EndsASymmetricSearchAsWell) {
    auto arguments = endlessRun();
    arguments.insert(arguments.end(), {"--approach", "symmetric"});
    const CommandResult result = interrupted(arguments, SIGINT);
    EXPECT_EQ(result.status, 130);
    EXPECT_EQ(result.err, "znica: interrupted; no result was written.\n");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("bold.nii"));
}

// As under nohup. The run is then ended by the other signal, so the first one had no effect.
TEST_F(Interrupt, IgnoredByTheCallerStaysIgnored) {
    for (const auto& [signal, name] : {std::pair(SIGHUP, "HUP"), std::pair(SIGINT, "INT")}) {
        RunningCommand running(endlessRun(), {{}, {}, std::string("trap '' ") + name + ";"});
        waitForTheSearch();
        running.signal(signal);
        std::this_thread::sleep_for(50ms); // a run that reacts to it has ended by then
        EXPECT_EQ(running.end(SIGTERM).status, 128 + SIGTERM) << name;
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("bold.nii"));
    }
}

TEST_F(Interrupt, IgnoredByTheCallerStaysIgnoredWhileTheLibrariesAreLoaded) {
    const std::string interrupted = "export LD_PRELOAD=" INTERRUPTING_LIBRARY_FILE ";";
    EXPECT_EQ(znica({"--version"}, {{}, {}, interrupted}).status, 128 + SIGINT);
    EXPECT_EQ(znica({"--version"}, {{}, {}, "trap '' INT;" + interrupted}).status, 0);
}

TEST_F(Interrupt, KeepsTheResultThatWasToBeReplaced) {
    std::filesystem::create_directory(folder / "out");
    writeFile(folder / "out/log.txt", "earlier");
    writeFile(folder / "out/dataset_description.json", R"({"GeneratedBy": [{"Name": "znica"}]})");
    auto arguments = endlessRun();
    arguments.emplace_back("--force");
    EXPECT_EQ(interrupted(arguments, SIGINT).status, 130);
    EXPECT_THAT(namesIn(folder / "out"), ElementsAre("dataset_description.json", "log.txt"));
    EXPECT_EQ(textOf(folder / "out/log.txt"), "earlier");
}

TEST_F(Interrupt, KeepsThePartialFilesOnRequestAndSaysWhere) {
    auto arguments = endlessRun();
    arguments.emplace_back("--keep-partial");
    const CommandResult result = interrupted(arguments, SIGINT);
    EXPECT_EQ(result.status, 130);
    const std::string start = "znica: interrupted; no result was written. The partial files are in ";
    ASSERT_THAT(result.err, StartsWith(start));
    const std::filesystem::path kept = result.err.substr(start.size(), result.err.size() - start.size() - 2);
    EXPECT_EQ(kept.parent_path(), folder.path());
    EXPECT_THAT(textOf(kept / "status.json"), HasSubstr("\"partial\": true"));
    EXPECT_THAT(textOf(kept / "status.json"), HasSubstr("130"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
}

} // namespace
} // namespace zn::test
