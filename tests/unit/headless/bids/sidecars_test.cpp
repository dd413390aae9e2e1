// Which JSON files an image inherits, in small datasets.
#include "headless/bids/sidecars.h"

#include "files.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

namespace fs = std::filesystem;

class Sidecars : public testing::Test {
protected:
    void make(const std::string& file) const {
        fs::create_directories((folder / file).parent_path());
        writeFile(folder / file, "{}");
    }
    std::vector<std::string> of(const std::string& image) const {
        std::vector<std::string> files;
        for (const fs::path& file : sidecarsOf(folder / image)) {
            files.push_back(file.lexically_relative(folder.path()).string());
        }
        return files;
    }

    const TemporaryFolder folder;
};

TEST_F(Sidecars, OfFourLevelsComeNearestFirst) {
    for (const char* file :
         {"ds/task-rest_bold.json", "ds/sub-01/sub-01_task-rest_bold.json", "ds/sub-01/ses-1/sub-01_ses-1_bold.json",
          "ds/sub-01/ses-1/func/sub-01_ses-1_task-rest_bold.json"}) {
        make(file);
    }
    EXPECT_THAT(of("ds/sub-01/ses-1/func/sub-01_ses-1_task-rest_bold.nii.gz"),
                ElementsAre("ds/sub-01/ses-1/func/sub-01_ses-1_task-rest_bold.json",
                            "ds/sub-01/ses-1/sub-01_ses-1_bold.json", "ds/sub-01/sub-01_task-rest_bold.json",
                            "ds/task-rest_bold.json"));
}

TEST_F(Sidecars, WithMoreEntitiesComeFirstInAFolder) {
    make("ds/bold.json");
    make("ds/task-rest_acq-mb_bold.json");
    make("ds/task-rest_bold.json");
    EXPECT_THAT(of("ds/sub-01/func/sub-01_task-rest_acq-mb_bold.nii.gz"),
                ElementsAre("ds/task-rest_acq-mb_bold.json", "ds/task-rest_bold.json", "ds/bold.json"));
}

TEST_F(Sidecars, OfOtherImagesDoNotApply) {
    for (const char* file :
         {"ds/task-rest_events.json", "ds/task-nback_bold.json", "ds/sub-02/sub-02_bold.json",
          "ds/sub-01/func/sub-01_task-rest_run-2_bold.json", "ds/task-rest_bold.tsv", "task-rest_bold.json"}) {
        make(file);
    }
    EXPECT_THAT(of("ds/sub-01/func/sub-01_task-rest_run-1_bold.nii.gz"), IsEmpty());
}

TEST_F(Sidecars, OutsideADatasetLieInTheImagesFolder) {
    make("task-rest_bold.json");
    make("some/task-rest_bold.json");
    EXPECT_THAT(of("some/sub-01_task-rest_bold.nii.gz"), ElementsAre("some/task-rest_bold.json"));
    EXPECT_THAT(of("some/task-rest_bold.nii.gz"), IsEmpty());
}

TEST_F(Sidecars, OfManyImagesAreThoseOfEach) {
    for (const char* file : {"ds/task-rest_bold.json", "ds/sub-01/func/sub-01_task-rest_run-1_bold.json",
                             "ds/sub-02/func/sub-02_task-rest_bold.json"}) {
        make(file);
    }
    SidecarFolders folders;
    const auto counted = [&](const char* image) { return folders.sidecarsOf(folder / image).size(); };
    EXPECT_EQ(counted("ds/sub-01/func/sub-01_task-rest_run-1_bold.nii.gz"), 2U);
    EXPECT_EQ(counted("ds/sub-01/func/sub-01_task-rest_run-2_bold.nii.gz"), 1U);
    EXPECT_EQ(counted("ds/sub-02/func/sub-02_task-rest_bold.nii.gz"), 2U);
}

} // namespace

} // namespace zn::test
