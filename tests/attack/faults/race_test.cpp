// What others do between two steps of znica, which is held before the second one.
#include "attack/faults/scenario.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::HasSubstr;

// The command of a scenario, held at one of its renames while others act.
class HeldCommand {
public:
    HeldCommand(Scenario& scenario, std::uint64_t rename)
        : stem_(folder_ / "pause"), command_(scenario.start({Call::kRename, rename, "pause"}, stem_)) {
        for (int i = 0; i < 20'000 && !std::filesystem::exists(stem_.string() + ".reached"); ++i) usleep(1000);
        EXPECT_TRUE(std::filesystem::exists(stem_.string() + ".reached"));
    }
    Ending goOn() {
        writeFile(stem_.string() + ".go", "");
        return command_->wait();
    }

private:
    TemporaryFolder folder_;
    std::filesystem::path stem_;
    std::unique_ptr<DisturbedCommand> command_;
};

Snapshot placeOf(const Scenario& scenario) {
    return below(scenario.now(), scenario.plan().place);
}

// Another run finishes in the meantime: its result stays, and so does the one that came too late.
TEST(Race, WithoutForceTheResultThatIsThereFirstStays) {
    Scenario scenario(planNamed("Run"));
    HeldCommand late(scenario, 1);
    ASSERT_EQ(scenario.runAgain(false).status, 0);
    const Snapshot first = placeOf(scenario);
    const Ending ending = late.goOn();
    EXPECT_EQ(ending.status, 1);
    EXPECT_THAT(ending.err, HasSubstr("/out cannot be created: Directory not empty. The finished result is in "));
    EXPECT_EQ(placeOf(scenario), first);
    EXPECT_EQ(withoutTimes(below(scenario.now(), "out.finished")), scenario.wanted());
}

// In a folder that is filled entry by entry, at each of the entries.
TEST(Race, WithoutForceNoEntryOfTheCurrentFolderIsReplaced) {
    Scenario scenario(planNamed("RunInTheCurrentFolder"));
    const std::uint64_t renames = scenario.calls()[static_cast<std::size_t>(Call::kRename)];
    ASSERT_GE(renames, 3U);
    for (std::uint64_t at = 1; at <= renames; ++at) {
        HeldCommand late(scenario, at);
        std::filesystem::create_directory(scenario.world() / "out/plugin");
        for (const char* name : {"log.txt", "status.json", "dataset_description.json"}) {
            const auto file = scenario.world() / "out" / name;
            if (!std::filesystem::exists(file)) writeFile(file, "of another program");
        }
        const Snapshot before = placeOf(scenario);
        const Ending ending = late.goOn();
        for (const auto& [name, bytes] : before) {
            if (bytes != "of another program") continue;
            EXPECT_EQ(placeOf(scenario)[name], bytes) << name << " at " << at;
        }
        EXPECT_EQ(ending.status != 0, ending.err.find("The finished result is in ") != std::string::npos);
    }
}

// With --force, what a user puts into the earlier result at the last moment stays there.
TEST(Race, WithForceAFileOfTheUserIsNotRemoved) {
    Scenario scenario(planNamed("RunInPlaceOfAResult"));
    const std::uint64_t renames = scenario.calls()[static_cast<std::size_t>(Call::kRename)];
    HeldCommand late(scenario, renames);
    writeFile(scenario.world() / "out/notes.txt", "ten years of work");
    const Ending ending = late.goOn();
    EXPECT_EQ(ending.status, 1);
    EXPECT_THAT(ending.err, HasSubstr("holds notes.txt, which does not belong to a result"));
    Snapshot place = placeOf(scenario);
    EXPECT_EQ(place["notes.txt"], "ten years of work");
    place.erase("notes.txt");
    EXPECT_EQ(place, scenario.earlier());
}

TEST(Race, WithoutForceATableThatHasAppearedIsNotReplaced) {
    Scenario::Plan plan = planNamed("Compare");
    plan.arguments.pop_back(); // --force
    plan.earlierText.clear();
    Scenario scenario(plan);
    HeldCommand late(scenario, 1);
    writeFile(scenario.world() / "pairs.tsv", "another table");
    const Ending ending = late.goOn();
    EXPECT_EQ(ending.status, 1);
    EXPECT_THAT(ending.err, HasSubstr("pairs.tsv exists; name another file, or use --force.\n"));
    EXPECT_EQ(textOf(scenario.world() / "pairs.tsv"), "another table");
    EXPECT_TRUE(below(scenario.now(), "pairs.tsv").contains(""));
}

} // namespace
} // namespace zn::test
