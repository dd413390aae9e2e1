#include "headless/denoise/foreign_image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using headless::noteOnForeignImage;

namespace {

TEST(ForeignImage, IsNamedByAllThatContradicts) {
    EXPECT_EQ(
        noteOnForeignImage("bids/sub-02_task-rest_run-1_bold.nii.gz", "sub-01_task-blocks_run-01"),
        "Image: sub-02_task-rest_run-1_bold.nii.gz is named sub-02, task-rest, but the result sub-01, task-blocks; "
        "check that they belong together.");
    EXPECT_THAT(noteOnForeignImage("sub-01_task-rest_echo-2_bold.nii", "sub-01_task-rest_echo-1"),
                testing::HasSubstr("is named echo-2, but the result echo-1;"));
}

TEST(ForeignImage, MayBeAnotherVersionOfTheSameRun) {
    EXPECT_EQ(noteOnForeignImage("sub-01_task-rest_space-T1w_desc-smooth_bold.nii.gz",
                                 "sub-01_task-rest_space-MNI152NLin6Asym_res-2"),
              "");
    EXPECT_EQ(noteOnForeignImage("sub-01_ses-a_task-rest_bold.nii.gz", "sub-01_task-rest"), "");
}

TEST(ForeignImage, IsNotGuessedFromOtherNames) {
    EXPECT_EQ(noteOnForeignImage("clean.nii.gz", "sub-01_task-rest"), "");
    EXPECT_EQ(noteOnForeignImage("sub-02_task-rest_bold.nii.gz", "a"), "");
}

} // namespace
} // namespace zn::test
