// An image that does not say how its grid lies in space.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

class Orientation : public testing::Test {
protected:
    CommandResult runOn(const NiftiBytes& image, const std::vector<std::string>& options = {}) {
        writeFile(folder / "a.nii", image.bytes());
        std::vector<std::string> arguments = {"run",   (folder / "a.nii").string(), "--components", "1",
                                              "--out", (folder / "out").string(),   "--no-report",  "--force"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments);
    }
    json input() const { return json::parse(textOf(folder / "out/a_desc-ICA_decomposition.json"))["Input"]; }

    TemporaryFolder folder;
};

TEST_F(Orientation, ThatIsMissingIsNotedAndRecorded) {
    NiftiBytes image = plainSeries(24);
    image.sformCode = 0;
    const CommandResult result = runOn(image);
    ASSERT_EQ(result.status, 0) << result.err;
    const std::string note = "Orientation: " + (folder / "a.nii").string() +
                             " has none (its sform and qform codes are 0), so left and right are unknown and positions "
                             "are given in voxels only.";
    EXPECT_THAT(result.out, HasSubstr(note + "\n"));
    EXPECT_EQ(input()["Oriented"], false);
    EXPECT_EQ(input()["Notes"][0], (json{{"Code", "no-orientation"}, {"Text", note}}));
}

TEST_F(Orientation, OfEitherKindNeedsNoNote) {
    NiftiBytes image = plainSeries(24);
    for (const bool sform : {true, false}) {
        image.sformCode = sform ? 1 : 0;
        image.qformCode = sform ? 0 : 1;
        EXPECT_THAT(runOn(image).out, Not(HasSubstr("Orientation")));
        EXPECT_EQ(input()["Oriented"], true);
    }
}

TEST_F(Orientation, ThatIsMissingIsNotReplacedByAnAffineInMessages) {
    NiftiBytes image = plainSeries(24);
    image.sformCode = 0;
    writeFile(folder / "mask.nii", plainMask().bytes());
    EXPECT_THAT(runOn(image, {"--mask", (folder / "mask.nii").string()}).err,
                HasSubstr("a.nii is 6x5x4 without orientation; resample the mask"));
}

} // namespace
} // namespace zn::test
