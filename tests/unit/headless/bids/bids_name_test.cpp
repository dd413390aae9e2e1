#include "headless/bids/bids_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;
using testing::ElementsAre;
using testing::Pair;

namespace {

TEST(BidsName, ConsistsOfEntitiesSuffixAndExtension) {
    const auto name = parseBidsName("sub-01_ses-a_task-rest_run-02_bold.nii.gz");
    ASSERT_TRUE(name);
    EXPECT_THAT(name->entities,
                ElementsAre(Pair("sub", "01"), Pair("ses", "a"), Pair("task", "rest"), Pair("run", "02")));
    EXPECT_EQ(name->suffix, "bold");
    EXPECT_EQ(name->extension, ".nii.gz");
    EXPECT_EQ(name->entityText(), "sub-01_ses-a_task-rest_run-02");
    EXPECT_EQ(name->label("task"), "rest");
    EXPECT_EQ(name->label("acq"), std::nullopt);
}

TEST(BidsName, MayHaveNoEntitiesOrNoExtension) {
    EXPECT_EQ(parseBidsName("bold.json")->suffix, "bold");
    EXPECT_EQ(parseBidsName("task-rest_bold")->extension, "");
}

TEST(BidsName, IsRefusedWhenItIsNotOne) {
    for (const char* name :
         {"", ".json", "sub-01", "sub-01_.nii", "sub-01_bold_task-rest.nii", "sub-_bold.nii", "-01_bold.nii",
          "sub-01_sub-02_bold.nii", "sub-0 1_bold.nii", "sub-\xc3\xa4_bold.nii", "mean image_bold.nii", "_bold.nii"}) {
        EXPECT_FALSE(parseBidsName(name)) << name;
    }
}

TEST(BidsName, LosesEntities) {
    const auto name = parseBidsName("sub-01_task-rest_space-MNI_res-2_desc-preproc_bold.nii.gz");
    EXPECT_EQ(name->without({"space", "res", "desc"}).entityText(), "sub-01_task-rest");
}

TEST(BidsName, AppliesToNamesWithTheSameEntitiesAndMore) {
    const auto image = *parseBidsName("sub-01_task-rest_run-1_bold.nii.gz");
    EXPECT_TRUE(appliesTo(*parseBidsName("task-rest_bold.json"), image));
    EXPECT_TRUE(appliesTo(*parseBidsName("bold.json"), image));
    EXPECT_FALSE(appliesTo(*parseBidsName("task-nback_bold.json"), image));
    EXPECT_FALSE(appliesTo(*parseBidsName("task-rest_acq-mb_bold.json"), image));
}

} // namespace

} // namespace zn::test
