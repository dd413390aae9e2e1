// The injector itself: it sees every way in which znica, its libraries and the C library call the system, and what it
// is told to do happens.
#include "attack/faults/disturbed_command.h"
#include "files.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Injector : public testing::Test {
protected:
    Injector() {
        std::filesystem::create_directories(folder / "w/empty");
        std::filesystem::create_directories(folder / "w/full/inner");
        writeFile(folder / "w/full/inner/file", "");
        writeFile(folder / "w/text", "0123456789");
        writeCompressed(folder / "w/text.gz", "0123456789");
    }
    Ending probe(const std::string& action, const Fault& fault) {
        return runDisturbed({action, (folder / "w").string()},
                            {folder.path(), {folder / "w"}, folder / "log", {}, FAULT_PROBE_FILE}, fault);
    }
    TemporaryFolder folder;
};

struct Way {
    const char* action;
    Call call;
};

// For the test's name: "WritesAStreamWrite".
std::string nameOfWay(const testing::TestParamInfo<Way>& info) {
    std::string name = std::string(info.param.action) + " " + kCallNames[static_cast<std::size_t>(info.param.call)];
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (i == 0 || name[i - 1] == ' ') name[i] = static_cast<char>(name[i] - 'a' + 'A');
    }
    std::erase(name, ' ');
    return name;
}

class EveryWay : public Injector, public testing::WithParamInterface<Way> {};

TEST_P(EveryWay, IsSeenAndFailsOnRequest) {
    const auto [action, call] = GetParam();
#ifdef __SANITIZE_ADDRESS__
    if (call == Call::kAllocate) GTEST_SKIP() << "AddressSanitizer has its own allocator";
#endif
    const Ending counted = probe(action, {call, 1'000'000, "fail", EIO});
    EXPECT_EQ(counted.status, 0);
    EXPECT_EQ(counted.injected, 0U);
    EXPECT_GE(counted.calls[static_cast<std::size_t>(call)], 1U);

    for (const auto& entry : std::filesystem::directory_iterator(folder / "w")) std::filesystem::remove_all(entry);
    writeFile(folder / "w/text", "0123456789");
    writeCompressed(folder / "w/text.gz", "0123456789");
    std::filesystem::create_directories(folder / "w/empty");
    std::filesystem::create_directories(folder / "w/full/inner");
    const Ending failed = probe(action, {call, 1, "fail", EIO});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.injected, 1U);
    EXPECT_EQ(probe(action, {call, 1, "kill"}).signal, SIGKILL);
}

INSTANTIATE_TEST_SUITE_P(Of, EveryWay,
                         testing::Values(Way{"writes a stream", Call::kOpen}, Way{"writes a stream", Call::kWrite},
                                         Way{"writes a stream", Call::kClose}, Way{"reads a stream", Call::kOpen},
                                         Way{"reads a stream", Call::kRead}, Way{"writes a file", Call::kOpen},
                                         Way{"writes a file", Call::kWrite}, Way{"writes a file", Call::kClose},
                                         Way{"reads a file", Call::kOpen}, Way{"reads a file", Call::kRead},
                                         Way{"writes compressed", Call::kOpen}, Way{"writes compressed", Call::kWrite},
                                         Way{"writes compressed", Call::kClose}, Way{"reads compressed", Call::kOpen},
                                         Way{"reads compressed", Call::kRead}, Way{"writes pieces", Call::kOpen},
                                         Way{"writes pieces", Call::kWrite}, Way{"writes pieces", Call::kClose},
                                         Way{"syncs", Call::kSync}, Way{"lists", Call::kOpen},
                                         Way{"lists", Call::kList}, Way{"renames", Call::kRename},
                                         Way{"exchanges", Call::kRename}, Way{"renames a path", Call::kRename},
                                         Way{"makes a folder", Call::kMkdir}, Way{"makes a path", Call::kMkdir},
                                         Way{"removes a file", Call::kRemove}, Way{"removes a folder", Call::kRemove},
                                         Way{"removes a path", Call::kRemove}, Way{"removes all", Call::kRemove},
                                         Way{"removes all", Call::kList}, Way{"allocates", Call::kAllocate},
                                         Way{"starts a thread", Call::kThread}),
                         nameOfWay);

TEST_F(Injector, CutsAWriteInHalf) {
    const Ending ending = probe("writes pieces", {Call::kWrite, 1, "short"});
    EXPECT_EQ(ending.status, 1);
    EXPECT_EQ(textOf(folder / "w/file"), "01");
}

TEST_F(Injector, KillsAfterHalfOfAWrite) {
    EXPECT_EQ(probe("writes a stream", {Call::kWrite, 1, "kill-half"}).signal, SIGKILL);
    EXPECT_EQ(textOf(folder / "w/file"), "01234");
}

TEST_F(Injector, KillsAfterACall) {
    EXPECT_EQ(probe("renames", {Call::kRename, 1, "kill-after"}).signal, SIGKILL);
    EXPECT_TRUE(std::filesystem::exists(folder / "w/t"));
}

TEST_F(Injector, DeliversSignals) {
    EXPECT_EQ(probe("renames", {Call::kRename, 1, "signal", SIGTERM}).signal, SIGTERM);
    EXPECT_FALSE(std::filesystem::exists(folder / "w/t"));
    EXPECT_EQ(probe("renames", {Call::kRename, 1, "signal-after", SIGINT}).signal, SIGINT);
    EXPECT_TRUE(std::filesystem::exists(folder / "w/t"));
}

TEST_F(Injector, GoesOnFailingOnRequest) {
    EXPECT_GT(probe("lists", {Call::kList, 2, "short", 0, true}).injected, 2U);
}

TEST_F(Injector, LogsTheCallsOnWatchedFilesAlone) {
    probe("renames", {});
    const std::string log = textOf(folder / "log");
    EXPECT_EQ(log, "rename\t" + (folder / "w/text").string() + "\t" + (folder / "w/t").string() + "\n");
}

} // namespace
} // namespace zn::test
