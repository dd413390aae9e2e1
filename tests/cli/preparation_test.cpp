// znica run with --smooth, --high-pass and --scale.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "cli/nifti_reading.h"
#include "files.h"

#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using testing::HasSubstr;

class PreparationOfARun : public testing::Test {
protected:
    PreparationOfARun() { writeFile(folder / "a_bold.nii", plainSeries(40).bytes()); } // 3 mm, 2 s, 6 x 5 x 4 voxels

    CommandResult run(const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"run",         (folder / "a_bold.nii").string(),
                                              "--out",       (folder / "out").string(),
                                              "--epsilon",   "0.9",
                                              "--seed",      "1",
                                              "--no-report", "--mask",
                                              "none"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments);
    }
    nlohmann::json preparation() {
        return nlohmann::json::parse(textOf(folder / "out/a_desc-ICA_decomposition.json"))["Preparation"];
    }

    TemporaryFolder folder;
};

TEST_F(PreparationOfARun, IsPrintedAndRecorded) {
    const CommandResult result = run({"--components", "3", "--smooth", "6", "--high-pass", "40", "--scale", "sd"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("Preparation: smoothed by 6 mm (FWHM) within the mask.\n"));
    EXPECT_THAT(result.out, HasSubstr("Preparation: high-pass filter at 40 s, 3 cosines removed.\n"));
    EXPECT_THAT(result.out, HasSubstr("Preparation: the mean of every voxel removed, scaled to unit variance.\n"));
    const auto facts = preparation();
    EXPECT_EQ(facts["SmoothingFWHM"], 6.0);
    EXPECT_EQ(facts["CosinesRemoved"], 3);
    EXPECT_EQ(facts["Scaling"], "sd");
}

TEST_F(PreparationOfARun, ThatSmoothsIfNeededSmoothsWhiteNoise) {
    EXPECT_EQ(run({"--components", "3", "--smooth", "auto"}).status, 0);
    const auto facts = preparation();
    EXPECT_EQ(facts["SmoothingAsked"], "auto");
    EXPECT_EQ(facts["EstimatedFWHM"].size(), 3U);
    EXPECT_GT(facts["SmoothingFWHM"], 0.0);
}

TEST_F(PreparationOfARun, SmoothsIfNeededByDefault) {
    EXPECT_EQ(run({"--components", "3"}).status, 0);
    EXPECT_EQ(preparation()["SmoothingAsked"], "auto");
    EXPECT_EQ(preparation()["HighPassSeconds"], 0.0);
    EXPECT_EQ(preparation()["Scaling"], "none");
}

TEST_F(PreparationOfARun, IsNotMadeIfTheDataAreTakenAsTheyAre) {
    EXPECT_EQ(run({"--components", "3", "--as-is"}).status, 0);
    EXPECT_EQ(preparation()["SmoothingFWHM"], 0.0);
    EXPECT_EQ(preparation()["Scaling"], "none");
}

TEST_F(PreparationOfARun, WithValuesThatMakeNoSenseIsRefusedWithASentence) {
    struct Case {
        std::vector<std::string> options;
        int status;
        std::string message;
    };
    for (const auto& [options, status, message] : std::vector<Case>{
             {{"--smooth", "-1"}, 2, "--smooth: needs a width in mm, 0 for none, or auto; got -1"},
             {{"--smooth", "nan"}, 2, "--smooth: needs a width in mm, 0 for none, or auto; got nan"},
             {{"--smooth", "31"}, 3, "--smooth 31 mm is more than 10 voxels of 3 mm; give a smaller width"},
             {{"--high-pass", "3.9"}, 3, "--high-pass 3.9 s is below two repetition times of 2 s; give a longer"},
             {{"--scale", "z"}, 2, "--scale: needs none, percent or sd; got z"},
             {{"--high-pass", "10", "--components", "30"},
              3,
              "30 components are more than the 25 that --high-pass 10 leaves of the 40 volumes"},
             {{"--high-pass", "10", "--scale", "sd", "--eigenvalues", "2:25"},
              3,
              "25 eigenvalues are more than the 24 that --high-pass 10 and --scale sd leave of the 40 volumes"}}) {
        const CommandResult result = run(options);
        EXPECT_EQ(result.status, status) << message;
        EXPECT_THAT(result.err, HasSubstr(message));
        EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a_bold.nii"));
    }
}

TEST_F(PreparationOfARun, LeavesFewerComponentsForMax) {
    EXPECT_EQ(run({"--components", "max", "--high-pass", "10", "--scale", "sd"}).status, 0);
    const auto json = nlohmann::json::parse(textOf(folder / "out/a_desc-ICA_decomposition.json"));
    EXPECT_EQ(json["Settings"]["Components"], 24); // 40 volumes, 15 cosines, the mean
}

// The picture behind the maps, which the preparation would leave at zero; of all voxels, whatever the mask.
TEST_F(PreparationOfARun, DoesNotChangeTheMeanImage) {
    const NiftiBytes image = plainSeries(40);
    std::vector<std::int16_t> stored(120 * 40);
    std::memcpy(stored.data(), image.data.data(), image.data.size());
    NiftiBytes half = plainMask();
    for (std::size_t v = 0; v < 60; ++v) half.data[v] = '\0';
    writeFile(folder / "half.nii", half.bytes());
    for (const std::string& mask : {std::string("none"), (folder / "half.nii").string()}) {
        const CommandResult result =
            znica({"run", (folder / "a_bold.nii").string(), "--out", (folder / "out").string(), "--force", "--epsilon",
                   "0.9", "--components", "2", "--mask", mask, "--scale", "sd"});
        ASSERT_EQ(result.status, 0) << result.err;
        const auto mean = ReadNifti(folder / "out/a_desc-mean_bold.nii.gz").values<float>();
        ASSERT_EQ(mean.size(), 120U);
        for (std::size_t v : {0U, 57U, 119U}) {
            int sum = 0;
            for (std::size_t t = 0; t < 40; ++t) sum += stored[t * 120 + v];
            EXPECT_EQ(mean[v], static_cast<float>(sum / 40.0)) << mask;
        }
    }
}

TEST_F(PreparationOfARun, CountsTheVoxelsThatItMakesConstant) {
    NiftiBytes image;
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    image.dim[4] = 24;
    for (int t = 0; t < 24; ++t) {
        for (int v = 0; v < 120; ++v)
            image.append(static_cast<float>(v < 5 ? -100 : 500) + static_cast<float>((v * t * t) % 31));
    }
    writeFile(folder / "a_bold.nii", image.bytes());
    const CommandResult result = run({"--components", "2", "--scale", "percent", "--smooth", "0"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out,
                HasSubstr("voxels were excluded after the preparation: 0 with non-finite values, 4 constant."));
}

} // namespace
} // namespace zn::test
