// What killed processes leave behind, and what the next one makes of it.
#include "files.h"
#include "headless/result/hidden_folder.h"
#include "headless/result/old_foreign_work.h"
#include "headless/result/result_folder.h"
#include "headless/text/text_file.h"
#include "headless/text/unfinished_name.h"

#include <chrono>
#include <csignal>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {

using namespace headless;

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

std::string idOfEndedProcess() {
    const pid_t process = fork();
    if (process == 0) _exit(0);
    waitpid(process, nullptr, 0);
    return std::to_string(process);
}

// The name that another process gives to unfinished work.
std::string nameGivenBy(const std::string& process, const std::string& wanted) {
    std::string name = unfinishedName(wanted, 0);
    const std::string own = "-" + std::to_string(getpid()) + "-";
    return name.replace(name.rfind(own), own.size(), "-" + process + "-");
}

std::string nameOfLeftover(const std::string& wanted) {
    return nameGivenBy(idOfEndedProcess(), wanted);
}

class Leftovers : public testing::Test {
protected:
    void write(const fs::path& file) {
        fs::create_directories((folder.path() / file).parent_path());
        writeFile(folder.path() / file, file.filename().string());
    }

    TemporaryFolder folder;
    const std::string left = nameOfLeftover("out");
};

TEST_F(Leftovers, OfEndedProcessesAreRemovedAndNothingElse) {
    const std::string ours = unfinishedName("out", 0);
    std::string elsewhere = left;
    elsewhere.replace(elsewhere.find("unfinished-") + 11, 8, "00000000");
    for (const std::string& name : {left, ours, elsewhere, std::string(".out.unfinished-notes"), std::string("out")}) {
        write(fs::path(name) / "file");
    }
    write(nameOfLeftover("report.html"));
    removeLeftovers(folder.path());
    EXPECT_THAT(namesIn(folder.path()), testing::UnorderedElementsAre(ours, elsewhere, ".out.unfinished-notes", "out"));
}

TEST_F(Leftovers, OfOtherMachinesAreNamedOnceTheyAreOld) {
    const std::string out = ".out.unfinished-00000000-17-0";
    const std::string other = ".other.unfinished-00000000-17-0";
    for (const std::string& name : {left, out, other}) write(fs::path(name) / "log.txt");
    EXPECT_EQ(noteOnOldForeignWork(folder.path()), "");
    const auto twoDaysAgo = fs::file_time_type::clock::now() - std::chrono::hours(48);
    for (const std::string& name : {left, out}) {
        fs::last_write_time(folder / name / "log.txt", twoDaysAgo);
        fs::last_write_time(folder / name, twoDaysAgo);
    }
    fs::last_write_time(folder / other, twoDaysAgo); // but its log is being written
    const std::string note = folder.path().string() + " holds " + out +
                             ", which another machine or container began and has not changed for a day; remove it if "
                             "that process was killed.";
    EXPECT_EQ(noteOnOldForeignWork(folder.path()), note);
    EXPECT_EQ(noteOnOldForeignWork(folder.path(), "out"), note);
    EXPECT_EQ(noteOnOldForeignWork(folder.path(), "other"), "");
}

// Ended, but its parent has not collected its status yet.
TEST_F(Leftovers, OfAZombieAreRemoved) {
    const pid_t zombie = fork();
    if (zombie == 0) _exit(0);
    siginfo_t ended{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(zombie), &ended, WEXITED | WNOWAIT), 0);
    write(fs::path(nameGivenBy(std::to_string(zombie), "out")) / "file");
    removeLeftovers(folder.path());
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    waitpid(zombie, nullptr, 0);
}

TEST_F(Leftovers, OfARunningProcessAreKept) {
    const pid_t running = fork();
    if (running == 0) {
        pause();
        _exit(0);
    }
    const std::string name = nameGivenBy(std::to_string(running), "out");
    write(fs::path(name) / "file");
    removeLeftovers(folder.path());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre(name));
    kill(running, SIGKILL);
    waitpid(running, nullptr, 0);
}

// Killed while the earlier entries were moved away: they come back.
TEST_F(Leftovers, OfAnExchangeThatHadBegunAreUndone) {
    write("earlier 1");
    write(fs::path(left) / ".replacing/earlier 2");
    write(fs::path(left) / "new 1");
    removeLeftovers(folder.path());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("earlier 1", "earlier 2"));
}

// Killed while the new entries were moved into their place: the others follow.
TEST_F(Leftovers, OfAnExchangePastItsMiddleAreCompleted) {
    write("new 1");
    write(fs::path(left) / ".replaced/earlier 1");
    write(fs::path(left) / "new 2");
    removeLeftovers(folder.path());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("new 1", "new 2"));
}

TEST_F(Leftovers, DoNotBlockTheFolderTheyAreIn) {
    write(fs::path("out") / left / "log.txt");
    UnfinishedWork unfinished;
    ResultFolder result(unfinished, folder / "out", ResultKind::kRun, false);
    EXPECT_THAT(namesIn(folder / "out"), IsEmpty());
}

TEST_F(Leftovers, OfATextFileAreRemovedWhenItIsWritten) {
    write(nameOfLeftover("table.tsv"));
    replaceTextFile(folder / "table.tsv", "text");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("table.tsv"));
}

TEST_F(Leftovers, HaveNamesThatEveryFileSystemAllows) {
    EXPECT_LE(unfinishedName(std::string(255, 'x'), 99).size(), 143U);
}

// Partial files that were asked for, and results whose place was taken.
TEST_F(Leftovers, AreNotWhatTheUserWasToldOf) {
    const fs::path hidden = folder / left;
    write(fs::path(left) / "log.txt");
    write("out.partial/notes.txt");
    EXPECT_EQ(keepHiddenFolder(hidden, folder / "out", "partial"), folder / "out.partial-2");
    removeLeftovers(folder.path());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("out.partial", "out.partial-2"));
}

} // namespace
} // namespace zn::test
