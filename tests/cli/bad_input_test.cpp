// What a user sees when an input is unusable: one sentence, exit status 3, and no result.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zn::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class BadInput : public testing::Test {
protected:
    CommandResult run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "run");
        arguments.insert(arguments.end(), {"--out", (folder / "out").string()});
        return znica(arguments);
    }
    CommandResult runOn(const NiftiBytes& image, const std::string& name = "bold.nii") {
        writeFile(folder / name, image.bytes());
        return run({(folder / name).string()});
    }
    CommandResult runWithMask(const NiftiBytes& mask) {
        writeFile(folder / "bold.nii", plainSeries().bytes());
        writeFile(folder / "mask.nii", mask.bytes());
        return run({(folder / "bold.nii").string(), "--mask", (folder / "mask.nii").string(), "--components", "3"});
    }
    // One line beginning with the program's name, status 3, and nothing left behind.
    void expectRefusal(const CommandResult& result, const std::string& words) {
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_THAT(result.err, AllOf(StartsWith("znica: "), HasSubstr(words)));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        for (const auto& name : namesIn(folder.path())) EXPECT_THAT(name, testing::Not(HasSubstr("out")));
    }

    TemporaryFolder folder;
};

TEST_F(BadInput, AMissingFile) {
    expectRefusal(run({(folder / "none.nii.gz").string()}), "none.nii.gz does not exist");
}

TEST_F(BadInput, AFolder) {
    expectRefusal(run({folder.path().string()}), "is a folder");
}

TEST_F(BadInput, ATextFileWithTheEndingOfAnImage) {
    writeFile(folder / "text.nii", "Not an image at all, however long this text may become.\n");
    expectRefusal(run({(folder / "text.nii").string()}), "text.nii is not a NIfTI image");
}

TEST_F(BadInput, ATextFileWithTheEndingOfACompressedImage) {
    writeFile(folder / "text.nii.gz", "Not an image at all.\n");
    expectRefusal(run({(folder / "text.nii.gz").string()}), "text.nii.gz is not a NIfTI image");
}

TEST_F(BadInput, AnEmptyFile) {
    writeFile(folder / "empty.nii", "");
    expectRefusal(run({(folder / "empty.nii").string()}), "empty.nii is empty; export or copy the image again.");
}

// The image library prints several messages about these; the user sees only one sentence.
TEST_F(BadInput, ADamagedHeaderIsReportedInOneLine) {
    NiftiBytes image = plainSeries();
    image.dim[1] = -6;
    expectRefusal(runOn(image), "bold.nii has a damaged header: its axis 1 has -6 elements");
    image = plainSeries();
    image.dataType = 999;
    expectRefusal(runOn(image), "bold.nii has a damaged header: there is no data type 999");
    expectRefusal(runOn(plainSeries(), "bold.Nii"), "bold.Nii is not a NIfTI image");
}

TEST_F(BadInput, AHeaderWithMoreVolumesThanTheFile) {
    NiftiBytes image = plainSeries(12);
    image.dim[4] = 13;
    expectRefusal(runOn(image), "bold.nii is too short for the image that its header describes");
}

TEST_F(BadInput, ACompressedFileWithFewerVolumesThanItsHeaderSays) {
    NiftiBytes image = plainSeries(24);
    image.dim[4] = 25;
    writeCompressed(folder / "bold.nii.gz", image.bytes());
    expectRefusal(run({(folder / "bold.nii.gz").string()}), "volume 25 of 25 cannot be read");
}

TEST_F(BadInput, ACompressedFileCutInTheMiddle) {
    writeCompressed(folder / "complete.nii.gz", plainSeries(24).bytes());
    const std::string bytes = textOf(folder / "complete.nii.gz");
    writeFile(folder / "bold.nii.gz", bytes.substr(0, bytes.size() / 2));
    expectRefusal(run({(folder / "bold.nii.gz").string()}), "is truncated or damaged: volume ");
}

TEST_F(BadInput, ACompressedFileWithAWrongChecksum) {
    writeCompressed(folder / "complete.nii.gz", plainSeries(24).bytes());
    std::string bytes = textOf(folder / "complete.nii.gz");
    bytes[bytes.size() - 7] ^= 1; // the checksum is the first four of the last eight bytes
    writeFile(folder / "bold.nii.gz", bytes);
    const CommandResult result = run({(folder / "bold.nii.gz").string()});
    expectRefusal(result, "damaged");
}

TEST_F(BadInput, ACompressedFileWithoutItsChecksum) {
    writeCompressed(folder / "complete.nii.gz", plainSeries(24).bytes());
    const std::string bytes = textOf(folder / "complete.nii.gz");
    writeFile(folder / "bold.nii.gz", bytes.substr(0, bytes.size() - 8));
    expectRefusal(run({(folder / "bold.nii.gz").string()}), "bold.nii.gz is truncated: it ends before its checksum;");
}

TEST_F(BadInput, ACompressedFileWithAWrongChecksumBeyondTheLastVolume) {
    writeCompressed(folder / "complete.nii.gz", plainSeries(24).bytes() + std::string(100'000, 'x'));
    std::string bytes = textOf(folder / "complete.nii.gz");
    bytes[bytes.size() - 7] ^= 1;
    writeFile(folder / "bold.nii.gz", bytes);
    expectRefusal(run({(folder / "bold.nii.gz").string()}), "bold.nii.gz is damaged: its checksum is wrong;");
}

TEST_F(BadInput, AThreeDimensionalImage) {
    NiftiBytes image = plainMask();
    expectRefusal(runOn(image), "bold.nii holds a single volume (6x5x4); an analysis needs a 4D image");
}

TEST_F(BadInput, ATimeSeriesOfOneVolume) {
    expectRefusal(runOn(plainSeries(1)), "holds a single volume");
}

TEST_F(BadInput, AFifthAxis) {
    NiftiBytes image = plainSeries(12);
    image.dim = {5, 6, 5, 4, 6, 2, 1, 1};
    expectRefusal(runOn(image), "has 5 axes");
}

TEST_F(BadInput, AnAxisWithoutElements) {
    NiftiBytes image = plainSeries();
    image.dim[2] = 0;
    const CommandResult result = runOn(image);
    expectRefusal(result, "has a damaged header: its axis 2 has 0 elements");
}

TEST_F(BadInput, DimensionsWhoseProductOverflows) {
    NiftiBytes image = plainSeries();
    image.dim = {4, 32767, 32767, 32767, 32767, 1, 1, 1};
    expectRefusal(runOn(image), "more than 2147483647 voxels");
}

TEST_F(BadInput, DimensionsFarBeyondASmallCompressedFile) {
    NiftiBytes image = plainSeries();
    image.dim = {4, 1000, 1000, 1000, 32767, 1, 1, 1};
    writeCompressed(folder / "bold.nii.gz", image.bytes());
    expectRefusal(run({(folder / "bold.nii.gz").string()}), "is too short");
}

TEST_F(BadInput, ComplexNumbers) {
    NiftiBytes image = plainSeries(3);
    image.dataType = 32;
    image.bitsPerVoxel = 64;
    image.data = std::string(6 * 5 * 4 * 3 * 8, '\0');
    expectRefusal(runOn(image), "stores voxels of type NIFTI_TYPE_COMPLEX64");
}

TEST_F(BadInput, MoreComponentsThanVolumes) {
    writeFile(folder / "bold.nii", plainSeries(12).bytes());
    expectRefusal(run({(folder / "bold.nii").string(), "--components", "13"}),
                  "13 components are more than the 12 volumes");
}

TEST_F(BadInput, MoreDefaultComponentsThanVolumes) {
    expectRefusal(runOn(plainSeries(12)), "request fewer with --components");
}

TEST_F(BadInput, EigenvaluesBeyondTheNumberOfVolumes) {
    writeFile(folder / "bold.nii", plainSeries(12).bytes());
    expectRefusal(run({(folder / "bold.nii").string(), "--eigenvalues", "9:13"}), "9:13 exceed the 12 volumes");
}

TEST_F(BadInput, ARepetitionTimeOfZero) {
    NiftiBytes image = plainSeries(24);
    image.pixdim[4] = 0;
    expectRefusal(runOn(image), "specify it with --tr SECONDS");
}

TEST_F(BadInput, ARepetitionTimeInTheWrongUnit) {
    NiftiBytes image = plainSeries(24);
    image.pixdim[4] = 2000; // milliseconds, labelled as seconds
    expectRefusal(runOn(image), "the header says 2000 s, which is not between 0.001 and 20 s; specify it with --tr");
}

TEST_F(BadInput, ConstantData) {
    NiftiBytes image = plainSeries(24);
    image.data.assign(image.data.size(), '\0');
    expectRefusal(runOn(image), "does not change over time");
}

TEST_F(BadInput, DataThatAreAllNaN) {
    NiftiBytes image;
    image.dim[4] = 24;
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    for (int i = 0; i < 6 * 5 * 4 * 24; ++i) image.append(std::numeric_limits<float>::quiet_NaN());
    expectRefusal(runOn(image), "no voxel that can be analysed: 120 with non-finite values");
}

TEST_F(BadInput, AMaskOfADifferentSize) {
    NiftiBytes mask = plainMask();
    mask.dim[3] = 3;
    mask.data.resize(6 * 5 * 3);
    const CommandResult result = runWithMask(mask);
    expectRefusal(result, "mask.nii is 6x5x3 voxels with affine [3 0 0 -9; 0 3 0 -7.5; 0 0 3 -6]");
    EXPECT_THAT(result.err, HasSubstr("bold.nii is 6x5x4 with affine [3 0 0 -9; 0 3 0 -7.5; 0 0 3 -6]"));
}

TEST_F(BadInput, AMaskAtADifferentPosition) {
    NiftiBytes mask = plainMask();
    mask.sform[1][3] = 7.5f;
    expectRefusal(runWithMask(mask), "with affine [3 0 0 -9; 0 3 0 7.5; 0 0 3 -6]");
}

TEST_F(BadInput, AnEmptyMask) {
    NiftiBytes mask = plainMask();
    mask.data.assign(mask.data.size(), '\0');
    expectRefusal(runWithMask(mask), "mask.nii selects no voxels");
}

TEST_F(BadInput, AMaskOfSeveralVolumes) {
    expectRefusal(runWithMask(plainSeries(3)), "holds 3 volumes");
}

TEST_F(BadInput, FewerVoxelsThanVolumes) {
    NiftiBytes mask = plainMask();
    mask.data.assign(mask.data.size(), '\0');
    mask.data[7] = mask.data[8] = mask.data[9] = 1;
    expectRefusal(runWithMask(mask), "3 voxels are fewer than the 12 volumes; analyse more voxels");
}

TEST_F(BadInput, FewerVoxelsThanVolumesAreDetectedBeforeTheDataAreRead) {
    NiftiBytes mask = plainMask();
    mask.data.assign(mask.data.size(), '\0');
    mask.data[7] = 1;
    writeFile(folder / "mask.nii", mask.bytes());
    writeCompressed(folder / "complete.nii.gz", plainSeries(24).bytes());
    const std::string bytes = textOf(folder / "complete.nii.gz");
    writeFile(folder / "bold.nii.gz", bytes.substr(0, bytes.size() / 2)); // reading it would fail
    expectRefusal(run({(folder / "bold.nii.gz").string(), "--mask", (folder / "mask.nii").string()}),
                  "1 voxels are fewer than the 24 volumes");
}

TEST_F(BadInput, FewerVoxelsThanVolumesAfterExcludingConstantOnes) {
    NiftiBytes image = plainSeries(24);
    for (std::size_t t = 0; t < 24; ++t) { // all but 20 of 120 voxels, two bytes each
        image.data.replace(2 * 120 * t, 2 * 100, 2 * 100, '\0');
    }
    writeFile(folder / "bold.nii", image.bytes());
    expectRefusal(run({(folder / "bold.nii").string(), "--mask", "none"}), "20 voxels are fewer than the 24 volumes");
}

TEST_F(BadInput, MoreVoxelsThanThePluginAccepts) {
    NiftiBytes image;
    image.dim = {4, 250, 200, 101, 2, 1, 1, 1};
    image.dataType = 2;
    image.bitsPerVoxel = 8;
    image.data = std::string(5050000, '\0') + std::string(5050000, '\1');
    writeFile(folder / "bold.nii", image.bytes());
    expectRefusal(run({(folder / "bold.nii").string(), "--mask", "none", "--components", "1"}),
                  "5050000 voxels are more than the 5000000 that the plug-in accepts");
}

TEST_F(BadInput, AMissingPlugin) {
    writeFile(folder / "bold.nii", plainSeries(24).bytes());
    expectRefusal(run({(folder / "bold.nii").string(), "--plugin", "/nowhere/plugin.so"}),
                  "the plug-in /nowhere/plugin.so does not exist");
}

TEST_F(BadInput, APluginThatIsNotALibrary) {
    writeFile(folder / "bold.nii", plainSeries(24).bytes());
    writeFile(folder / "plugin.so", "text");
    expectRefusal(run({(folder / "bold.nii").string(), "--plugin", (folder / "plugin.so").string()}),
                  "plugin.so cannot be loaded");
}

TEST_F(BadInput, ALibraryThatIsNotAPlugin) {
    writeFile(folder / "bold.nii", plainSeries(24).bytes());
    expectRefusal(run({(folder / "bold.nii").string(), "--plugin", HOST_MODULE_FILE}),
                  "is not a plug-in of this host: it lacks the function createPlugin");
}

} // namespace
} // namespace zn::test
