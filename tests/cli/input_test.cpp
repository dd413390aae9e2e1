// What is read and analysed: masks, dummy scans, TR, number of components, memory.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "cli/nifti_reading.h"
#include "files.h"

#include <cmath>
#include <limits>
#include <numeric>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

// Runs on small generated images, with a plug-in that only echoes what it receives.
class Input : public testing::Test {
protected:
    CommandResult echo(const NiftiBytes& image, std::vector<std::string> options = {}) {
        writeFile(folder / "a_bold.nii", image.bytes());
        options.insert(options.begin(), {"run", "--as-is", (folder / "a_bold.nii").string(), "--out",
                                         (folder / "out").string(), "--plugin", FAKE_PLUGIN_FILE, "--verbose"});
        return znica(options, {{}, {"ZN_FAKE_PLUGIN=echo"}, {}});
    }
    // The same with the real plug-in; returns the final mask.
    std::vector<unsigned char> maskAfter(const NiftiBytes& image, std::vector<std::string> options = {}) {
        writeFile(folder / "a_bold.nii", image.bytes());
        options.insert(options.begin(), {"run", "--as-is", (folder / "a_bold.nii").string(), "--out",
                                         (folder / "out").string(), "--components", "1", "--seed", "1", "--force"});
        result = znica(options);
        EXPECT_EQ(result.status, 0) << result.err;
        return ReadNifti(folder / "out/a_desc-brain_mask.nii.gz").values<unsigned char>();
    }

    TemporaryFolder folder;
    CommandResult result;
};

constexpr int kVoxels = 6 * 5 * 4;

// Noise in every voxel: 1000 +- 100 where `bright` is true, otherwise 10 +- 5.
template <class Bright> NiftiBytes waves(int volumes, Bright bright) {
    NiftiBytes image;
    image.dim[4] = static_cast<std::int16_t>(volumes);
    std::uint32_t state = 1;
    for (int t = 0; t < volumes; ++t) {
        for (int v = 0; v < kVoxels; ++v) {
            state = state * 1664525U + 1013904223U;
            const int chance = static_cast<int>(state >> 24);
            image.append(static_cast<std::int16_t>(bright(v % 6, v / 6 % 5, v / 30) ? 900 + chance * 200 / 255
                                                                                    : 5 + chance * 10 / 255));
        }
    }
    return image;
}

NiftiBytes floats(int volumes) {
    NiftiBytes image;
    image.dim[4] = static_cast<std::int16_t>(volumes);
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    std::uint32_t state = 1;
    for (int i = 0; i < kVoxels * volumes; ++i) {
        state = state * 1664525U + 1013904223U;
        image.append(static_cast<float>(500 + (state >> 24)));
    }
    return image;
}

void setFloat(NiftiBytes& image, int volume, int voxel, float value) {
    std::memcpy(image.data.data() + 4 * (volume * kVoxels + voxel), &value, 4);
}

TEST_F(Input, TheAutomaticMaskIsTheLargestBrightComponentWithHolesFilled) {
    // A shell of 4 x 4 x 3 voxels with a dark middle row, and two bright voxels beyond a gap.
    const auto shell = [](int x, int y, int z) { return x < 4 && y < 4 && z < 3; };
    const auto hole = [](int x, int y, int z) { return (x == 1 || x == 2) && (y == 1 || y == 2) && z == 1; };
    const auto mask = maskAfter(
        waves(24, [&](int x, int y, int z) { return (shell(x, y, z) && !hole(x, y, z)) || (x == 5 && y == 4); }));
    for (int v = 0; v < kVoxels; ++v) EXPECT_EQ(mask[static_cast<std::size_t>(v)], shell(v % 6, v / 6 % 5, v / 30));
    EXPECT_THAT(result.out, HasSubstr("Mask: 48 of 120 voxels, from a brain mask computed from the mean image.\n"));
}

TEST_F(Input, AnImageWithoutBackgroundIsUsedCompletely) {
    EXPECT_THAT(maskAfter(plainSeries(24)), testing::Each(1));
}

TEST_F(Input, AnImageOfDeviationsFromZeroIsUsedCompletelyAndThatIsNoted) {
    NiftiBytes image;
    image.dim[4] = 24;
    std::uint32_t state = 1;
    for (int i = 0; i < kVoxels * 24; ++i) {
        state = state * 1664525U + 1013904223U;
        image.append(static_cast<std::int16_t>(static_cast<int>(state >> 24) - 128));
    }
    EXPECT_THAT(maskAfter(image), testing::Each(1));
    EXPECT_THAT(result.out, HasSubstr("no brain mask can be computed from it and all voxels are used"));
    const json record = json::parse(textOf(folder / "out/a_desc-ICA_decomposition.json"));
    EXPECT_THAT(record["Input"]["Notes"].dump(), HasSubstr("\"mask-without-intensities\""));
}

TEST_F(Input, AGivenMaskIsUsedAsIs) {
    NiftiBytes mask = plainMask();
    for (std::size_t v = 0; v < 60; ++v) mask.data[v] = '\0';
    writeFile(folder / "mask.nii", mask.bytes());
    const auto used = maskAfter(plainSeries(24), {"--mask", (folder / "mask.nii").string()});
    for (std::size_t v = 0; v < used.size(); ++v) EXPECT_EQ(used[v], v >= 60) << v;
    EXPECT_THAT(result.out, HasSubstr("Mask: 60 of 120 voxels, from the given mask.\n"));
}

TEST_F(Input, WithoutAMaskThePluginGetsNone) {
    const CommandResult echoed = echo(waves(24, [](int x, int, int) { return x < 3; }), {"--mask", "none"});
    EXPECT_THAT(echoed.out, HasSubstr("text 1 []\n"));
    EXPECT_THAT(echoed.out, HasSubstr("Mask: 120 of 120 voxels, no mask was requested.\n"));
}

TEST_F(Input, UnusableVoxelsAreExcludedFromEveryKindOfMaskAndCounted) {
    NiftiBytes image = floats(24);
    setFloat(image, 3, 17, std::numeric_limits<float>::quiet_NaN());
    setFloat(image, 23, 18, std::numeric_limits<float>::infinity());
    for (int t = 0; t < 24; ++t) setFloat(image, t, 40, 600.0f);
    writeFile(folder / "mask.nii", plainMask().bytes());
    for (const std::string& kind : {std::string("auto"), std::string("none"), (folder / "mask.nii").string()}) {
        const auto mask = maskAfter(image, {"--mask", kind});
        for (std::size_t v = 0; v < mask.size(); ++v) EXPECT_EQ(mask[v], v != 17 && v != 18 && v != 40) << kind << v;
        const std::string note = "Mask: 3 voxels were excluded: 2 with non-finite values, 1 constant.\n";
        EXPECT_THAT(result.out, HasSubstr(note));
        EXPECT_THAT(textOf(folder / "out/log.txt"), HasSubstr(note));
        EXPECT_THAT(result.out, HasSubstr("117 voxels x 24 volumes analysed\n"));
        const json facts = json::parse(textOf(folder / "out/a_desc-ICA_decomposition.json"));
        EXPECT_EQ(facts["Input"]["VoxelsDropped"], (json{{"NotFinite", 2}, {"Constant", 1}}));
    }
}

TEST_F(Input, AVolumeWithoutValuesIsNamed) {
    NiftiBytes image = floats(24);
    for (int v = 0; v < kVoxels; ++v) setFloat(image, 6, v, std::numeric_limits<float>::quiet_NaN());
    EXPECT_THAT(echo(image, {"--dummy-scans", "2"}).err,
                HasSubstr("a_bold.nii has no finite value in volume 7 of 24, counted from 1; repair the image.\n"));
    for (int v = 0; v < kVoxels; ++v) setFloat(image, 20, v, std::numeric_limits<float>::infinity());
    writeFile(folder / "mask.nii", plainMask().bytes());
    EXPECT_THAT(echo(image, {"--mask", (folder / "mask.nii").string()}).err,
                HasSubstr(" in volume 7 and 1 more of 24, counted from 1;"));
    EXPECT_THAT(echo(image, {"--dummy-scans", "22"}).err, Not(HasSubstr("no finite value")));
}

// AFNI and others keep their history there, which is not that of a map.
TEST_F(Input, AnExtensionOfItsHeaderChangesNothing) {
    const auto filesOf = [&](const NiftiBytes& image) {
        maskAfter(image);
        std::vector<std::string> texts;
        for (const char* name : {"brain_mask", "mean_bold", "ICA_components"}) {
            texts.push_back(textOf(folder / ("out/a_desc-" + std::string(name) + ".nii.gz")));
        }
        return texts;
    };
    NiftiBytes image = plainSeries();
    const auto without = filesOf(image);
    image.extension = std::string("\x20\0\0\0\x04\0\0\0", 8) + std::string(24, ' '); // 32 bytes, of AFNI
    EXPECT_EQ(filesOf(image), without);
}

TEST_F(Input, WithoutAReportOnlyThePageIsMissing) {
    std::string design = "block\n";
    for (int t = 0; t < 12; ++t) design += t % 4 < 2 ? "0\n" : "1\n";
    writeFile(folder / "design.tsv", design);
    const std::vector<std::string> options = {"--design", (folder / "design.tsv").string()};
    maskAfter(plainSeries(), options);
    auto names = namesIn(folder / "out");
    std::erase(names, "report.html");
    maskAfter(plainSeries(), {options[0], options[1], "--no-report"});
    EXPECT_EQ(namesIn(folder / "out"), names);
    EXPECT_THAT(names, testing::IsSupersetOf({"a_desc-ICA_design.tsv", "a_desc-mean_bold.nii.gz"}));
}

TEST_F(Input, DummyScansAreOmitted) {
    NiftiBytes image = plainSeries(26);
    const std::string all = image.data;
    image.data = std::string(2 * kVoxels * 2, '\x7F') + all.substr(2 * kVoxels * 2); // two bright volumes first
    NiftiBytes rest = plainSeries(26);
    rest.dim[4] = 24;
    rest.data = all.substr(2 * kVoxels * 2);
    const auto seen = [](const CommandResult& echoed) { return echoed.out.substr(echoed.out.find("text 0")); };
    const CommandResult skipped = echo(image, {"--dummy-scans", "2"});
    EXPECT_THAT(skipped.out, HasSubstr("24 volumes (first 2 omitted)"));
    EXPECT_THAT(skipped.out, HasSubstr("vtc volumes 24 "));
    EXPECT_EQ(seen(skipped), seen(echo(rest)));
    EXPECT_THAT(echo(image, {"--dummy-scans", "25"}).err, HasSubstr("leaves fewer than 2"));
    EXPECT_THAT(echo(image, {"--dummy-scans", "7"}).err, HasSubstr("20 components are more than the 19 volumes"));
}

TEST_F(Input, TheRepetitionTimeComesFromTheOptionThenTheSidecarThenTheHeader) {
    const NiftiBytes image = plainSeries(24); // 2 s
    EXPECT_THAT(echo(image).out, HasSubstr("TR 2 s (the header).\n"));
    writeFile(folder / "a_bold.json", R"({"RepetitionTime": 1.35})");
    CommandResult echoed = echo(image);
    EXPECT_THAT(echoed.out, HasSubstr(" tr 1350 "));
    EXPECT_THAT(echoed.out, HasSubstr("TR: a_bold.json says 1.35 s and is used; the header says 2 s.\n"));
    echoed = echo(image, {"--tr", "0.8"});
    EXPECT_THAT(echoed.out, HasSubstr(" tr 800 "));
    EXPECT_THAT(echoed.out, HasSubstr("TR: --tr says 0.8 s and is used; a_bold.json says 1.35 s.\n"));
    EXPECT_THAT(echoed.out, HasSubstr("TR: --tr says 0.8 s and is used; the header says 2 s.\n"));
}

TEST_F(Input, TheRepetitionTimeIsInheritedFromTheFoldersAbove) {
    const std::filesystem::path data = folder / "data";
    std::filesystem::create_directories(data / "sub-01/func");
    const auto image = data / "sub-01/func/sub-01_task-rest_bold.nii";
    writeFile(image, plainSeries(24).bytes()); // 2 s
    const auto said = [&] { return znica({"run", image, "--out", folder / "x", "--dry-run"}).out; };
    writeFile(data / "task-nback_bold.json", R"({"RepetitionTime": 5})");
    EXPECT_THAT(said(), HasSubstr("TR 2 s (the header)"));
    writeFile(data / "task-rest_bold.json", R"({"RepetitionTime": 3})");
    EXPECT_THAT(said(), HasSubstr("TR 3 s (task-rest_bold.json)"));
    writeFile(data / "sub-01/sub-01_bold.json", R"({"RepetitionTime": 4})");
    EXPECT_THAT(said(), HasSubstr("TR 4 s (sub-01_bold.json)"));
    writeFile(data / "sub-01/func/sub-01_task-rest_bold.json", R"({"TaskName": "rest"})");
    EXPECT_THAT(said(), HasSubstr("TR 4 s (sub-01_bold.json)"));
    writeFile(data / "sub-01/func/sub-01_task-rest_bold.json", R"({"RepetitionTime": 1})");
    EXPECT_THAT(said(), HasSubstr("TR 1 s (sub-01_task-rest_bold.json)"));
}

TEST_F(Input, ADifferenceOfOneMillisecondIsTolerated) {
    writeFile(folder / "a_bold.json", R"({"RepetitionTime": 2.001})");
    EXPECT_THAT(echo(plainSeries(24)).out, Not(HasSubstr("and is used")));
    writeFile(folder / "a_bold.json", R"({"RepetitionTime": 2.0011})");
    EXPECT_THAT(echo(plainSeries(24)).out, HasSubstr("and is used; the header says 2 s"));
}

TEST_F(Input, TheTimeUnitOfTheHeaderIsRespected) {
    NiftiBytes image = plainSeries(24);
    for (const auto& [units, value] : {std::pair(2 | 8, 1.5f), {2 | 16, 1500.0f}, {2 | 24, 1.5e6f}, {2, 1.5f}}) {
        image.units = static_cast<char>(units);
        image.pixdim[4] = value;
        EXPECT_THAT(echo(image).out, HasSubstr(" tr 1500 ")) << units;
    }
}

TEST_F(Input, AnUnusableTimeIsRefusedWithAHint) {
    NiftiBytes image = plainSeries(24);
    for (const char* seconds : {"0", "20.1", "-2", "\"two\""}) {
        writeFile(folder / "a_bold.json", std::string(R"({"RepetitionTime": )") + seconds + "}");
        const CommandResult refused = echo(image);
        EXPECT_EQ(refused.status, 3) << seconds;
        EXPECT_THAT(refused.err, HasSubstr("with --tr SECONDS"));
        EXPECT_THAT(echo(image, {"--tr", "2"}).out, HasSubstr(" tr 2000 "));
    }
    writeFile(folder / "a_bold.json", "{ this is not JSON");
    EXPECT_THAT(echo(image).err, HasSubstr("a_bold.json is not a JSON object"));
    writeFile(folder / "a_bold.json", R"({"TaskName": "rest"})");
    EXPECT_THAT(echo(image).out, HasSubstr("TR 2 s (the header)"));
    image.pixdim[4] = 0;
    const CommandResult refused = echo(image);
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("specify it with --tr SECONDS"));
}

// Data managers leave dangling links for files that have not been fetched yet.
TEST_F(Input, AnUnreadableSidecarDoesNotFallBackToTheHeader) {
    std::filesystem::create_symlink("not-fetched.json", folder / "a_bold.json");
    CommandResult refused = echo(plainSeries(24));
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("a_bold.json is a link to a file that does not exist"));
    EXPECT_THAT(echo(plainSeries(24), {"--tr", "2"}).out, HasSubstr(" tr 2000 "));

    std::filesystem::remove(folder / "a_bold.json");
    std::filesystem::create_directory(folder / "a_bold.json");
    refused = echo(plainSeries(24));
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("a_bold.json is a folder"));
}

TEST_F(Input, MaxGivesOneComponentPerVolume) {
    const CommandResult echoed = echo(plainSeries(24), {"--components", "max", "--dummy-scans", "1"});
    EXPECT_THAT(echoed.out, HasSubstr("integer 6 [1]\ninteger 7 [23]\ninteger 8 [500]\ninteger 9 [23]\n"));
}

TEST_F(Input, ADryRunPrintsTheMemoryAndLeavesNothing) {
    const CommandResult echoed = echo(plainSeries(24), {"--dry-run"});
    EXPECT_EQ(echoed.status, 0);
    EXPECT_THAT(echoed.out, testing::MatchesRegex("Input: 6x5x4 voxels, 24 volumes, TR 2 s \\(the header\\)\\.\n"
                                                  "Memory: about 0\\.0[0-9]* GiB at the peak, for 120 voxels; "
                                                  "[0-9.e+]* GiB are free\\.\n"));
    EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a_bold.nii"));
}

TEST_F(Input, ARunBeyondItsMemoryIsRefusedBeforeTheDataAreRead) {
    NiftiBytes image = plainSeries(24);
    writeCompressed(folder / "cut.nii.gz", image.bytes());
    const std::string complete = textOf(folder / "cut.nii.gz");
    writeFile(folder / "cut.nii.gz", complete.substr(0, complete.size() - 2000)); // reading all of it would fail
    for (const bool dry : {false, true}) {
        std::vector<std::string> arguments = {"run",   "--as-is", (folder / "cut.nii.gz").string(), "--memory",
                                              "0.001", "--out",   (folder / "out").string()};
        if (dry) arguments.emplace_back("--dry-run");
        const CommandResult refused = znica(arguments);
        EXPECT_EQ(refused.status, 5);
        EXPECT_THAT(refused.err, HasSubstr("of memory, but 0.001 GiB are allowed by --memory; use a smaller mask"));
        EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("cut.nii.gz"));
    }
}

// Complete runs of the real plug-in.
json decompositionOf(const std::filesystem::path& folder, const std::string& stem) {
    return json::parse(textOf(folder / (stem + "_desc-ICA_decomposition.json")));
}

class WholeRun : public testing::Test {
protected:
    std::string sample(const std::string& size, int sources) {
        const std::string name = size + std::to_string(sources);
        if (!std::filesystem::exists(folder / name)) {
            const CommandResult made = znica(
                {"simulate", "--size", size, "--sources", std::to_string(sources), "--out", (folder / name).string()});
            EXPECT_EQ(made.status, 0) << made.err;
        }
        return (folder / name / "sub-sim_task-blocks_bold.nii.gz").string();
    }
    TemporaryFolder folder;
};

TEST_F(WholeRun, TheEstimatedNumberOfComponentsIsCloseToTheTruth) {
    for (const auto& [size, sources] : {std::pair("tiny", 4), {"tiny", 8}, {"small", 8}}) {
        const auto out = folder / (size + std::to_string(sources) + "-out");
        const CommandResult run = znica(
            {"run", "--as-is", sample(size, sources), "--components", "auto", "--seed", "1", "--out", out.string()});
        ASSERT_EQ(run.status, 0) << run.err;
        const json facts = decompositionOf(out, "sub-sim_task-blocks");
        const int found = facts["ComponentsFound"];
        // The sources, the anatomy, and the stronger ones of the slice-wise fluctuations, which are not noise either.
        const int slices = std::string(size) == "tiny" ? 18 : 36;
        EXPECT_GE(found, sources + 1) << size;
        EXPECT_LE(found, sources + 1 + slices) << size;
        EXPECT_EQ(facts["ComponentEstimate"]["ParallelAnalysis"], found);

        const auto table = tableIn(out / "sub-sim_task-blocks_desc-ICA_dimension.tsv");
        EXPECT_THAT(table[0], testing::ElementsAre("components", "eigenvalue", "mdl", "laplace"));
        const auto eigenvalues = facts["Eigenvalues"].get<std::vector<double>>(); // the plug-in's own
        ASSERT_EQ(table.size(), eigenvalues.size() + 1);
        std::size_t best = 1;
        for (std::size_t k = 1; k < table.size(); ++k) {
            EXPECT_NEAR(std::stod(table[k][1]), eigenvalues[k - 1], 1e-10 * eigenvalues[0]);
            if (table[k][2] != "n/a" && std::stod(table[k][2]) < std::stod(table[best][2])) best = k;
        }
        EXPECT_EQ(facts["ComponentEstimate"]["MDL"], best);
    }
}

TEST_F(WholeRun, AnUncertainNumberOfComponentsIsNoted) {
    // Smoothed by four voxels, the brain of this sample has fewer independent voxels than volumes.
    const auto out = folder / "smooth-out";
    const CommandResult run = znica({"run", sample("tiny", 4), "--components", "auto", "--smooth", "32", "--seed", "1",
                                     "--keep-partial", "--out", out.string()});
    EXPECT_THAT(run.out, testing::HasSubstr(" effective samples are fewer than the 80 volumes"));
    std::vector<std::string> codes;
    const json facts = decompositionOf(out, "sub-sim_task-blocks");
    for (const json& note : facts["Input"]["Notes"]) codes.push_back(note["Code"]);
    EXPECT_THAT(codes, testing::Contains("components-few-samples"));
}

TEST_F(WholeRun, ThePredictedMemoryMatchesTheMemoryUsed) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer's own memory would be measured";
#endif
    const std::vector<std::pair<std::string, std::string>> cases = {{"small", "1"}, {"small", "20"}, {"medium", "1"}};
    for (const auto& [size, repeats] : cases) {
        const auto out = folder / (size + repeats);
        ASSERT_EQ(znica({"run", "--as-is", sample(size, 4), "--components", "5", "--seed", "1", "--repeats", repeats,
                         "--no-clustering", "--out", out.string()})
                      .status,
                  0);
        const json facts = decompositionOf(out, "sub-sim_task-blocks");
        const double predicted = facts["PredictedPeakMemoryBytes"];
        const double measured = facts["PeakMemoryBytes"];
        // The BLAS work space grows with the number of its threads, which depends on the machine.
        EXPECT_NEAR(measured / predicted, 1.0, 0.15) << size << repeats << " " << measured << " of " << predicted;
    }
}

TEST_F(WholeRun, MeasuredDataWithoutAnyOptions) {
    const std::filesystem::path data = MEASURED_DATA_FOLDER;
    if (!std::filesystem::exists(data)) GTEST_SKIP() << "no measured data in " << data << "; see CONTRIBUTING.md";
    const CommandResult run = znica({"run", "--as-is", (data / "oneback_small_bold.nii.gz").string(), "--seed", "1",
                                     "--out", (folder / "out").string()});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("20 of 20 components found\n"));
    // The mask that comes with the data was made differently: a quarter of the 98th percentile, holes filled.
    const auto theirs = ReadNifti(data / "oneback_small_mask.nii.gz").values<unsigned char>();
    const auto ours = ReadNifti(folder / "out/oneback_small_desc-brain_mask.nii.gz").values<unsigned char>();
    ASSERT_EQ(ours.size(), theirs.size());
    double both = 0.0;
    for (std::size_t v = 0; v < ours.size(); ++v) both += ours[v] != 0 && theirs[v] != 0;
    const double sum = std::accumulate(ours.begin(), ours.end(), 0.0) + static_cast<double>(theirs.size()) -
                       static_cast<double>(std::count(theirs.begin(), theirs.end(), 0));
    EXPECT_GT(2.0 * both / sum, 0.9); // Dice overlap
}

TEST_F(Input, ABatchJobUsesNoMoreThanItIsGranted) {
    writeFile(folder / "a_bold.nii", plainSeries(24).bytes());
    const std::vector<std::string> dryRun = {"run", "--dry-run", folder / "a_bold.nii", "--out", folder / "out"};
    const CommandResult refused = znica(dryRun, {{}, {"SLURM_JOB_ID=7", "SLURM_MEM_PER_NODE=1"}, {}});
    EXPECT_EQ(refused.status, 5);
    EXPECT_THAT(refused.err, HasSubstr("of memory, but 0.000977 GiB are granted to this batch job; request more"));
    EXPECT_EQ(znica(dryRun, {{}, {"SLURM_JOB_ID=7", "SLURM_MEM_PER_NODE=500"}, {}}).status, 0);
}

} // namespace
} // namespace zn::test
