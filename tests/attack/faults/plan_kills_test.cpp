// `znica group plan` killed while it replaces an earlier plan: a new plan never lies beside results of the earlier one.
#include "attack/faults/disturbed_command.h"
#include "files.h"

#include <filesystem>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// Whether a file holds what was computed for some plan.
bool isComputed(const fs::path& file) {
    const std::string name = file.filename().string();
    return name.starts_with("desc-groupICA_") || name.find("_desc-dualreg_") != std::string::npos;
}

bool hasResults(const fs::path& study) {
    for (const auto& entry : fs::recursive_directory_iterator(study)) {
        if (entry.path().lexically_relative(study).string().starts_with('.')) continue;
        if (isComputed(entry.path())) return true;
    }
    return fs::exists(study / "ica");
}

TEST(PlanKills, LeaveNoResultsBesideAnotherPlan) {
    const TemporaryFolder folder;
    const auto group = [&](std::vector<std::string> arguments, const Fault& fault) {
        arguments.insert(arguments.begin(), "group");
        return runDisturbed(arguments, {folder.path(), {folder / "study"}}, fault);
    };
    ASSERT_EQ(runDisturbed({"simulate", "--subjects", "3", "--size", "tiny", "--sources", "3", "--out", "data"},
                           {folder.path(), {}}, {})
                  .status,
              0);
    std::vector<std::string> images;
    for (const std::string subject : {"sub-01", "sub-02", "sub-03"}) {
        images.push_back("data/" + subject + "/func/" + subject + "_task-rest_bold.nii.gz");
    }
    ASSERT_EQ(
        group({"all", "study", images[0], images[1], images[2], "--components", "2", "--repeats", "1"}, {}).status, 0);
    const fs::path study = folder / "study";
    const fs::path begun = folder / "begun";
    fs::rename(study, begun);
    const std::vector<std::string> other = {"plan", "study", images[0], images[1]};

    std::uint64_t kills = 0;
    for (const Call call : {Call::kRename, Call::kRemove}) {
        for (std::uint64_t at = 1;; ++at) {
            fs::remove_all(study);
            fs::copy(begun, study, fs::copy_options::recursive);
            if (group(other, {call, at, "kill"}).injected == 0) break;
            ++kills;
            if (fs::exists(study / "study.json") && textOf(study / "study.json") != textOf(begun / "study.json")) {
                EXPECT_FALSE(hasResults(study)) << at;
            }
            const Ending repaired = group(other, {});
            EXPECT_EQ(repaired.status, 0) << at << repaired.err;
            EXPECT_FALSE(hasResults(study)) << at;
        }
    }
    EXPECT_GE(kills, 20U); // the files of three runs, the group's, and those of the plan
}

} // namespace
} // namespace zn::test
