#include "headless/events/events_beside_image.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

std::string found(const TemporaryFolder& folder, const std::string& stem) {
    return eventsBesideImage(folder / (stem + ".nii.gz"), stem).filename().string();
}

TEST(EventsBesideImage, HaveTheImagesEntities) {
    const TemporaryFolder folder;
    writeFile(folder / "sub-01_ses-2_task-face_acq-mb_dir-AP_run-1_events.tsv", "");
    EXPECT_EQ(found(folder, "sub-01_ses-2_task-face_acq-mb_dir-AP_run-1_bold"),
              "sub-01_ses-2_task-face_acq-mb_dir-AP_run-1_events.tsv");
    writeFile(folder / "scan_events.tsv", "");
    EXPECT_EQ(found(folder, "scan"), "scan_events.tsv");
    EXPECT_EQ(found(folder, "scan_bold"), "scan_events.tsv");
}

TEST(EventsBesideImage, LackTheEntitiesThatOnlyImagesHave) {
    const TemporaryFolder folder;
    writeFile(folder / "sub-01_task-face_run-1_events.tsv", "");
    for (const char* stem : {"sub-01_task-face_run-1_space-MNI152NLin6Asym_res-2_desc-preproc_bold",
                             "sub-01_task-face_run-1_echo-2_part-mag_bold", "sub-01_task-face_run-1_hemi-L_bold"}) {
        EXPECT_EQ(found(folder, stem), "sub-01_task-face_run-1_events.tsv") << stem;
    }
    writeFile(folder / "sub-01_task-face_run-1_space-MNI_events.tsv", "");
    EXPECT_EQ(found(folder, "sub-01_task-face_run-1_space-MNI_bold"),
              "sub-01_task-face_run-1_space-MNI_events.tsv"); // the closer name wins
}

TEST(EventsBesideImage, OfAnotherRunOrTaskAreNotTaken) {
    const TemporaryFolder folder;
    writeFile(folder / "sub-01_task-face_run-2_events.tsv", "");
    writeFile(folder / "task-face_events.tsv", "");
    try {
        found(folder, "sub-01_task-face_run-1_space-MNI_bold");
        FAIL() << "found";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status(), ExitStatus::kInput);
        EXPECT_EQ(failure.what(), "--design auto needs " + (folder / "sub-01_task-face_run-1_events.tsv").string() +
                                      ", which does not exist; name a file, or leave out --design.");
    }
}

} // namespace
} // namespace zn::test
