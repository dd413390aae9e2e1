// What a power cut finds depends on the order in which files, folders and names reach the disk.
#include "attack/faults/scenario.h"

#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

struct LoggedCall {
    std::string name;
    std::string path;
    std::string second; // of a rename
};

std::vector<LoggedCall> callsIn(const std::string& log) {
    std::vector<LoggedCall> calls;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        LoggedCall call;
        std::istringstream cells(line);
        std::getline(cells, call.name, '\t');
        std::getline(cells, call.path, '\t');
        std::getline(cells, call.second, '\t');
        while (call.path.ends_with('/')) call.path.pop_back();
        calls.push_back(call);
    }
    return calls;
}

// Position of the first such call from `start` on; the number of calls if there is none.
template <class Matches>
std::size_t firstCall(const std::vector<LoggedCall>& calls, std::size_t start, Matches matches) {
    return static_cast<std::size_t>(
        std::find_if(calls.begin() + static_cast<std::ptrdiff_t>(start), calls.end(), matches) - calls.begin());
}

// Every file written and every folder made in the hidden folder is synced afterwards, before position `end`.
void expectSynced(const std::vector<LoggedCall>& calls, const std::string& hidden, std::size_t end) {
    int changes = 0;
    for (std::size_t i = 0; i < end; ++i) {
        const LoggedCall& change = calls[i];
        if ((change.name != "write" && change.name != "mkdir") || !change.path.starts_with(hidden)) continue;
        if (change.path.find("/.replac") != std::string::npos) continue; // holds the earlier entries for a moment
        ++changes;
        const std::string folder = std::filesystem::path(change.path).parent_path().string();
        for (const std::string& changed : {change.path, folder}) {
            if (!changed.starts_with(hidden)) continue;
            const std::size_t sync =
                firstCall(calls, i, [&](const auto& call) { return call.name == "fsync" && call.path == changed; });
            EXPECT_LT(sync, end) << changed << " after " << change.name;
        }
    }
    EXPECT_GE(changes, 10);
}

class DiskOrder : public testing::TestWithParam<const char*> {};

TEST_P(DiskOrder, IsFilesThenNamesThenRemoval) {
    Scenario scenario(planNamed(GetParam()));
    const std::vector<LoggedCall> calls = callsIn(scenario.log());
    const std::string out = (scenario.world() / "out").string();
    const bool inside = scenario.fillsCurrentFolder();

    const std::size_t made = firstCall(calls, 0, [](const auto& call) { return call.name == "mkdir"; });
    ASSERT_LT(made, calls.size());
    const std::string hidden = calls[made].path;
    const std::size_t naming = firstCall(calls, made, [](const auto& call) { return call.name == "rename"; });
    ASSERT_LT(naming, calls.size());
    expectSynced(calls, hidden, naming);

    std::size_t lastNaming = naming;
    for (std::size_t i = naming; i < calls.size(); ++i) {
        if (calls[i].name == "rename") lastNaming = i;
    }
    const std::string holder = inside ? out : scenario.world().string();
    const std::size_t sync =
        firstCall(calls, lastNaming, [&](const auto& call) { return call.name == "fsync" && call.path == holder; });
    ASSERT_LT(sync, calls.size()) << "the new names were not synced";
    const std::size_t removal = firstCall(calls, naming, [](const auto& call) { return call.name == "remove"; });
    EXPECT_LT(sync, removal);
    EXPECT_EQ(removal < calls.size(), inside || !scenario.earlier().empty());
}

INSTANTIATE_TEST_SUITE_P(Of, DiskOrder,
                         testing::Values("Run", "RunInPlaceOfAResult", "RunInTheCurrentFolder",
                                         "RunInPlaceOfTheCurrentFolder", "Simulate", "SimulateInPlaceOfASample"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
} // namespace zn::test
