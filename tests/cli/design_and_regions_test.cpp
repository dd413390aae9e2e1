// Design matrices and regions: what is accepted and what is refused.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::HasSubstr;

class DesignAndRegions : public testing::Test {
protected:
    DesignAndRegions() { writeFile(folder / "bold.nii", plainSeries(4).bytes()); }

    CommandResult run(const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {
            "run",   (folder / "bold.nii").string(), "--components", "2",
            "--out", (folder / "out").string(),      "--plugin",     FAKE_PLUGIN_FILE};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments, {{}, {"ZN_FAKE_PLUGIN=silence"}, {}});
    }
    std::string errorWithDesign(const std::string& text) {
        writeFile(folder / "design.txt", text);
        return run({"--design", (folder / "design.txt").string()}).err;
    }
    std::string errorWithNames(const std::string& text) {
        writeFile(folder / "labels.nii", plainMask().bytes());
        writeFile(folder / "names.tsv", text);
        return run({"--rois", (folder / "labels.nii").string(), "--roi-names", (folder / "names.tsv").string()}).err;
    }
    // The fake plug-in ends every run silently: this message means that the input was accepted.
    const std::string accepted = "znica: the plug-in ended the analysis: it gave no reason.\n";

    TemporaryFolder folder;
};

TEST_F(DesignAndRegions, ATableWithAHeaderIsAccepted) {
    EXPECT_EQ(errorWithDesign("face\thouse\n0\t1\n0.5\t-1e-3\n1\t0\n0\t0\n"), accepted);
    EXPECT_EQ(errorWithDesign("\xEF\xBB\xBF"
                              "face\r\n1\r\n2\r\n3\r\n4\r\n\r\n"),
              accepted);
}

TEST_F(DesignAndRegions, RtcTextIsAccepted) {
    EXPECT_EQ(errorWithDesign(
                  "FileVersion:     2\nType:            DesignMatrix\nNrOfPredictors:  2\n"
                  "NrOfDataPoints:  4\n\n\"TC1\" \"TC 2\" \n    0     1 \n  0.5     0 \n    1     1 \n    0     1 \n"),
              accepted);
}

TEST_F(DesignAndRegions, NumbersWithoutNamesAreAccepted) {
    EXPECT_EQ(errorWithDesign("1\n2\n3\n4\n"), accepted);
}

TEST_F(DesignAndRegions, InvalidDesignMatricesAreRefused) {
    EXPECT_THAT(errorWithDesign("face\n1\n2\n3\n"),
                HasSubstr("has 3 rows of predictor values, but the data have 4 volumes"));
    EXPECT_THAT(errorWithDesign("face\thouse\n1\t2\n3\n"), HasSubstr("line 3, has 1 cells, but the header has 2"));
    EXPECT_THAT(errorWithDesign("face\nfour\n"), HasSubstr("line 2, column \"face\", holds \"four\""));
    EXPECT_THAT(errorWithDesign("face\nnan\n"), HasSubstr("holds \"nan\" where a number is expected"));
    EXPECT_THAT(errorWithDesign(""), HasSubstr("is empty"));
    EXPECT_THAT(errorWithDesign(std::string("a\0b", 3)), HasSubstr("is not a text file"));
    EXPECT_THAT(errorWithDesign("FileVersion: 2\n\n\"A\"\n1\n"), HasSubstr("lacks the line \"NrOfPredictors:\""));
    EXPECT_THAT(errorWithDesign("FileVersion: 2\nNrOfPredictors: 2\nNrOfDataPoints: 4\n\n\"A\"\n"),
                HasSubstr("names 1 predictors in quotes, but its header says 2"));
    EXPECT_THAT(errorWithDesign("FileVersion: 2\nNrOfPredictors: 1\nNrOfDataPoints: 4\n\n\"A\"\n1\n2\n"),
                HasSubstr("ends before its 4 rows"));
    EXPECT_THAT(errorWithDesign("FileVersion: 2\nNrOfPredictors: 1\nNrOfDataPoints: 4\n\n\"A\"\n1 2\n"),
                HasSubstr("line 6, has 2 values for 1 predictors"));
    EXPECT_THAT(run({"--design", (folder / "none.tsv").string()}).err, HasSubstr("none.tsv does not exist"));
}

// Names p1 to p`count` and four rows of values.
std::string tableOf(int count) {
    std::string names;
    std::string values;
    for (int p = 1; p <= count; ++p) {
        names += (p > 1 ? "\tp" : "p") + std::to_string(p);
        values += p > 1 ? "\t1" : "1";
    }
    return names + "\n" + values + "\n" + values + "\n" + values + "\n" + values + "\n";
}

TEST_F(DesignAndRegions, MorePredictorsThanThePluginAcceptsAreRefused) {
    EXPECT_EQ(errorWithDesign(tableOf(16)), accepted);
    EXPECT_EQ(errorWithDesign(tableOf(17)), "znica: " + (folder / "design.txt").string() +
                                                " has 17 predictors; the plug-in accepts at most 16; keep only the "
                                                "columns that matter.\n");
    const std::string rtc = "FileVersion: 2\nNrOfPredictors: 17\nNrOfDataPoints: 4\n\n";
    std::string names;
    for (int p = 1; p <= 17; ++p) names += "\"p" + std::to_string(p) + "\" ";
    const std::string row = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\n";
    EXPECT_THAT(errorWithDesign(rtc + names + "\n" + row + row + row + row), HasSubstr("has 17 predictors"));
}

TEST_F(DesignAndRegions, AFolderInsteadOfATableIsRefused) {
    writeFile(folder / "labels.nii", plainMask().bytes());
    std::filesystem::create_directory(folder / "table");
    const std::string table = (folder / "table").string();
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--design", table},
          {"--rois", (folder / "labels.nii").string(), "--roi-names", table}}) {
        const CommandResult result = run(options);
        EXPECT_EQ(result.status, 3) << options.front();
        EXPECT_EQ(result.err, "znica: " + table + " is a folder; name a file.\n");
    }
}

TEST_F(DesignAndRegions, RegionNamesNeedTwoColumns) {
    EXPECT_EQ(errorWithNames("index\tname\n1\tcortex\n"), accepted);
    EXPECT_EQ(errorWithNames("name\tcolour\tindex\ncortex\tred\t1\n"), accepted);
    EXPECT_THAT(errorWithNames("label\tname\n1\tcortex\n"), HasSubstr("has no column \"index\""));
    EXPECT_THAT(errorWithNames("index\tname\none\tcortex\n"), HasSubstr("line 2, holds \"one\""));
    EXPECT_THAT(errorWithNames("index\tname\n1\n"), HasSubstr("line 2, has 1 cells, but the header has 2"));
}

TEST_F(DesignAndRegions, LabelsInATableAreUniqueWholeNumbers) {
    EXPECT_EQ(errorWithNames("index\tname\n1.0\tcortex\n-2\tother\n16777217\tfar\n16777216\taway\n"), accepted);
    EXPECT_THAT(errorWithNames("index\tname\n1.7\tcortex\n"),
                HasSubstr("line 2, holds \"1.7\" where a label (a whole number) is expected"));
    EXPECT_THAT(errorWithNames("index\tname\n3e9\tcortex\n"), HasSubstr("line 2, holds \"3e9\""));
    EXPECT_THAT(errorWithNames("index\tname\n1\tcortex\n2\tother\n1\tagain\n"),
                HasSubstr("line 4, names the label 1 again, after line 2; keep only one of the two"));
}

TEST_F(DesignAndRegions, ARegionWithoutANameIsKnownByItsNumber) {
    NiftiBytes labels = plainMask();
    for (std::size_t v = 0; v < labels.data.size(); ++v) labels.data[v] = v < 60 ? '\7' : '\2';
    writeFile(folder / "labels.nii", labels.bytes());
    writeFile(folder / "names.tsv", "index\tname\n7\t\n2\tcortex\n");
    writeFile(folder / "long.nii", plainSeries(24).bytes());
    const CommandResult result =
        znica({"run", (folder / "long.nii").string(), "--components", "1", "--rois", (folder / "labels.nii").string(),
               "--roi-names", (folder / "names.tsv").string(), "--no-report", "--out", (folder / "out").string()});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(textOf(folder / "out/long_desc-ICA_decomposition.json"),
                testing::ContainsRegex("\"Regions\": \\[[[:space:]]*\"cortex\",[[:space:]]*\"7\"[[:space:]]*\\]"));
}

TEST_F(DesignAndRegions, InvalidLabelImagesAreRefused) {
    NiftiBytes labels = plainMask();
    labels.data.assign(labels.data.size(), '\0');
    writeFile(folder / "zero.nii", labels.bytes());
    EXPECT_THAT(run({"--rois", (folder / "zero.nii").string()}).err, HasSubstr("zero.nii contains no labels"));

    NiftiBytes fractions;
    fractions.dim = {3, 6, 5, 4, 1, 1, 1, 1};
    fractions.dataType = 16;
    fractions.bitsPerVoxel = 32;
    for (int i = 0; i < 120; ++i) fractions.append(0.5f);
    writeFile(folder / "fractions.nii", fractions.bytes());
    EXPECT_THAT(run({"--rois", (folder / "fractions.nii").string()}).err,
                HasSubstr("values that are not whole numbers"));

    labels.data.assign(labels.data.size(), '\1');
    labels.sform[0][0] = 2;
    writeFile(folder / "elsewhere.nii", labels.bytes());
    EXPECT_THAT(run({"--rois", (folder / "elsewhere.nii").string()}).err,
                HasSubstr("resample the label image to that grid"));
}

} // namespace
} // namespace zn::test
