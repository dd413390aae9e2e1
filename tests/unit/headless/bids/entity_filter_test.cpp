#include "headless/bids/entity_filter.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;
using testing::HasSubstr;

namespace {

class FilterFile : public testing::Test {
protected:
    bool passes(const std::string& json, const std::string& image) const {
        writeFile(folder / "filter.json", json);
        EntityFilter filter;
        filter.addFile(folder / "filter.json");
        return filter.passes(*parseBidsName(image));
    }
    std::string complaint(const std::string& json) const {
        try {
            passes(json, "sub-01_bold.nii");
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status(), ExitStatus::kInput);
            return failure.what();
        }
        return "";
    }
    const TemporaryFolder folder;
};

constexpr char kImage[] = "sub-01_ses-a_task-rest_run-02_bold.nii.gz";

TEST_F(FilterFile, AllowsALabelOrOneOfAList) {
    EXPECT_TRUE(passes(R"({"bold": {"task": "rest"}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"task": "nback"}})", kImage));
    EXPECT_TRUE(passes(R"({"bold": {"session": ["a", "b"]}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"ses": ["b", "c"]}})", kImage));
}

TEST_F(FilterFile, ComparesRunsAsNumbers) {
    EXPECT_TRUE(passes(R"({"bold": {"run": 2}})", kImage));
    EXPECT_TRUE(passes(R"({"bold": {"run": "2"}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"run": 20}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"subject": "1"}})", kImage)); // labels of other entities are texts
}

TEST_F(FilterFile, WantsAnEntityAbsentWithNullAndPresentWithAStar) {
    EXPECT_TRUE(passes(R"({"bold": {"acquisition": null}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"task": null}})", kImage));
    EXPECT_TRUE(passes(R"({"bold": {"task": "*"}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"acquisition": "*"}})", kImage));
    EXPECT_TRUE(passes(R"({"bold": {"acquisition": [null, "mb"]}})", kImage));
}

TEST_F(FilterFile, KnowsSuffixExtensionAndDatatype) {
    EXPECT_TRUE(passes(R"({"bold": {"suffix": "bold", "datatype": "func", "extension": ".nii.gz"}})", kImage));
    EXPECT_FALSE(passes(R"({"bold": {"suffix": "cbv"}})", kImage));
}

TEST_F(FilterFile, IgnoresQueriesForOtherImages) {
    EXPECT_TRUE(passes(R"({"t1w": {"session": "z"}, "bold": {}})", kImage));
}

TEST_F(FilterFile, IsRefusedWhenDamaged) {
    EXPECT_THAT(complaint("{ not JSON"), HasSubstr("is not a JSON object"));
    EXPECT_THAT(complaint("[]"), HasSubstr("is not a JSON object"));
    EXPECT_THAT(complaint(R"({"task": "rest"})"), HasSubstr("has no query \"bold\""));
    EXPECT_THAT(complaint(R"({"bold": {"task": {"a": 1}}})"),
                HasSubstr("has a value for \"task\" that is not a label"));
}

} // namespace

} // namespace zn::test
