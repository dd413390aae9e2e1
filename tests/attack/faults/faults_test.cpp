// Every call that znica makes to the file system, and its allocations, fail in turn, are cut short, or are the last
// thing before the process is killed. Afterwards the earlier result is there, or the new one, entire, and the exit
// status says which.
//
// A sample of the calls of each kind is tried; ZNICA_FAULTS=N tries up to N of them in each scenario, 100000 all.
#include "attack/faults/fault_table.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace zn::test {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::uint64_t kSample = 2; // a process takes ten times as long
constexpr bool kSeesAllocations = false;
#else
constexpr std::uint64_t kSample = 5;
constexpr bool kSeesAllocations = true; // AddressSanitizer has its own allocator
#endif

const std::vector<Fault>& kindsOfFaults() {
    static const std::vector<Fault> kinds = {
        {Call::kOpen, 0, "fail", EACCES},
        {Call::kOpen, 0, "fail", EMFILE},
        {Call::kOpen, 0, "fail", ENOSPC},
        {Call::kOpen, 0, "fail", EMFILE, true},
        {Call::kOpen, 0, "kill"},
        {Call::kOpen, 0, "signal", SIGTERM},
        {Call::kRead, 0, "fail", EIO},
        {Call::kRead, 0, "fail", EINTR},
        {Call::kRead, 0, "short"},
        {Call::kRead, 0, "short", 0, true},
        {Call::kRead, 0, "kill"},
        {Call::kRead, 0, "signal", SIGINT},
        {Call::kWrite, 0, "fail", ENOSPC},
        {Call::kWrite, 0, "fail", EIO},
        {Call::kWrite, 0, "fail", EINTR},
        {Call::kWrite, 0, "fail", ENOSPC, true},
        {Call::kWrite, 0, "short"},
        {Call::kWrite, 0, "short", 0, true},
        {Call::kWrite, 0, "kill"},
        {Call::kWrite, 0, "kill-half"},
        {Call::kWrite, 0, "signal", SIGTERM},
        {Call::kClose, 0, "fail", EIO},
        {Call::kClose, 0, "fail", EDQUOT},
        {Call::kClose, 0, "kill"},
        {Call::kClose, 0, "signal", SIGHUP},
        {Call::kRename, 0, "fail", EACCES},
        {Call::kRename, 0, "fail", EIO},
        {Call::kRename, 0, "fail", ENOSPC},
        {Call::kRename, 0, "kill"},
        {Call::kRename, 0, "kill-after"},
        {Call::kRename, 0, "signal", SIGTERM},
        {Call::kRename, 0, "signal-wait", SIGTERM},
        {Call::kRename, 0, "signal-after", SIGINT},
        {Call::kMkdir, 0, "fail", EACCES},
        {Call::kMkdir, 0, "fail", ENOSPC},
        {Call::kMkdir, 0, "kill"},
        {Call::kMkdir, 0, "signal-after", SIGTERM},
        {Call::kSync, 0, "fail", EIO},
        {Call::kSync, 0, "fail", ENOSPC},
        {Call::kSync, 0, "kill"},
        {Call::kSync, 0, "kill-after"},
        {Call::kSync, 0, "signal", SIGTERM},
        {Call::kRemove, 0, "fail", EACCES},
        {Call::kRemove, 0, "fail", EIO},
        {Call::kRemove, 0, "kill"},
        {Call::kRemove, 0, "signal-wait", SIGTERM},
        {Call::kList, 0, "fail", EIO},
        {Call::kList, 0, "kill"},
        {Call::kAllocate, 0, "fail", ENOMEM},
        {Call::kAllocate, 0, "fail", ENOMEM, true},
        {Call::kAllocate, 0, "kill"},
        {Call::kThread, 0, "fail", EAGAIN},
        {Call::kThread, 0, "fail", EAGAIN, true},
    };
    return kinds;
}

std::uint64_t wantedSample() {
    const char* text = std::getenv("ZNICA_FAULTS");
    return text ? std::strtoull(text, nullptr, 10) : kSample;
}

// Up to `wanted` numbers from 1 to `count`, evenly spaced, with the first and the last.
std::vector<std::uint64_t> sampleOf(std::uint64_t count, std::uint64_t wanted) {
    std::vector<std::uint64_t> numbers;
    if (count <= wanted || wanted < 2) wanted = count;
    for (std::uint64_t i = 0; i < wanted; ++i) numbers.push_back(wanted == 1 ? 1 : 1 + i * (count - 1) / (wanted - 1));
    return numbers;
}

FaultTable& sumOfAllScenarios() {
    static FaultTable table;
    return table;
}

class PrintsTheTable : public testing::Environment {
public:
    void TearDown() override { std::cout << sumOfAllScenarios().text(); }
};
const auto* const kPrints = testing::AddGlobalTestEnvironment(new PrintsTheTable);

// Thousands of runs, each of which waits for its files to reach the disk: in memory, where there is such a folder.
class WorksInMemory : public testing::Environment {
public:
    void SetUp() override {
        if (access("/dev/shm", W_OK) == 0) setenv("TMPDIR", "/dev/shm", 0);
    }
};
const auto* const kWorks = testing::AddGlobalTestEnvironment(new WorksInMemory);

class Faults : public testing::TestWithParam<Scenario::Plan> {};

std::string described(const Scenario& scenario, const Fault& fault, const Ending& ending) {
    return scenario.plan().name + ", " + nameOf(fault) + " at " + std::to_string(fault.at) + ": status " +
           std::to_string(ending.status) + ", signal " + std::to_string(ending.signal) + "\n" + ending.err;
}

// After a kill the same command, or the same with --force, succeeds, and clears up.
void expectTheNextRunToSucceed(Scenario& scenario, const Verdict& verdict, const std::string& description) {
    const auto& arguments = scenario.plan().arguments;
    const bool forced = std::find(arguments.begin(), arguments.end(), "--force") != arguments.end();
    const bool replaces =
        arguments.front() != "report" && !forced && (verdict.found != Found::kEarlier || scenario.fillsCurrentFolder());
    const Ending next = scenario.runAgain(replaces);
    EXPECT_EQ(next.status, 0) << "after " << description << next.err;
    const Verdict after = judge(scenario, {}, next);
    EXPECT_EQ(after.found, Found::kNew) << "after " << description;
    EXPECT_FALSE(after.leftovers) << "after " << description;
}

TEST_P(Faults, LeaveTheEarlierOrTheNewResult) {
    Scenario scenario(GetParam());
    for (Fault fault : kindsOfFaults()) {
        if (fault.call == Call::kAllocate && !kSeesAllocations) continue;
        const std::uint64_t calls = scenario.calls()[static_cast<std::size_t>(fault.call)];
        const std::uint64_t wanted = wantedSample() * (fault.call == Call::kAllocate ? 4 : 1);
        for (const std::uint64_t at : sampleOf(calls, wanted)) {
            fault.at = at;
            const Ending ending = scenario.run(fault);
            // The last allocations depend on the number of digits of times and process ids.
            if (ending.injected == 0 && fault.call == Call::kAllocate) continue;
            EXPECT_GE(ending.injected, 1U) << described(scenario, fault, ending);
            const Verdict verdict = judge(scenario, fault, ending);
            sumOfAllScenarios().add(fault, ending, verdict);
            EXPECT_EQ(verdict.complaint, "") << described(scenario, fault, ending);
            if (ending.signal == SIGKILL || verdict.found == Found::kMoving) {
                expectTheNextRunToSucceed(scenario, verdict, described(scenario, fault, ending));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(scenarioPlans()),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace zn::test
