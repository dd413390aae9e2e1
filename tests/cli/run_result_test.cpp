// A complete run of the real plug-in on a small simulated sample, and its result.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "cli/nifti_reading.h"
#include "files.h"

#include <cmath>
#include <cstdio>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

// Four sources, the anatomy and one more component, with a design matrix and regions. Run once for all tests.
class RunResult : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new TemporaryFolder;
        ASSERT_EQ(znica({"simulate", "--size", "tiny", "--sources", "4", "--out", sample("")}).status, 0);
        run = new CommandResult(znica(
            {"run", sample("bold.nii.gz"), "--mask", sample("desc-brain_mask.nii.gz"), "--components", "6", "--design",
             sample("desc-task_design.tsv"), "--rois", sample("desc-sources_dseg.nii.gz"), "--roi-names",
             sample("desc-sources_dseg.tsv"), "--label", "S01", "--seed", "1", "--out", result("")}));
    }
    static void TearDownTestSuite() {
        delete run;
        delete folder;
    }

    static std::string sample(const std::string& ending) {
        return (*folder / "sample").string() + (ending.empty() ? "" : "/sub-sim_task-blocks_" + ending);
    }
    static std::string result(const std::string& ending) {
        return (*folder / "result").string() + (ending.empty() ? "" : "/sub-sim_task-blocks_desc-ICA_" + ending);
    }

    static TemporaryFolder* folder;
    static CommandResult* run;
};

TemporaryFolder* RunResult::folder = nullptr;
CommandResult* RunResult::run = nullptr;

TEST_F(RunResult, SucceedsAndLeavesExactlyTheseFiles) {
    ASSERT_EQ(run->status, 0) << run->err;
    std::vector<std::string> names = {".bidsignore",
                                      "dataset_description.json",
                                      "log.txt",
                                      "plugin",
                                      "report.html",
                                      "status.json",
                                      "sub-sim_task-blocks_desc-ICA_components.nii.gz",
                                      "sub-sim_task-blocks_desc-ICA_decomposition.json",
                                      "sub-sim_task-blocks_desc-ICA_design.tsv",
                                      "sub-sim_task-blocks_desc-ICA_metrics.json",
                                      "sub-sim_task-blocks_desc-ICA_metrics.tsv",
                                      "sub-sim_task-blocks_desc-ICA_mixing.tsv",
                                      "sub-sim_task-blocks_desc-ICA_timeseries.json",
                                      "sub-sim_task-blocks_desc-ICA_timeseries.tsv",
                                      "sub-sim_task-blocks_desc-brain_mask.nii.gz",
                                      "sub-sim_task-blocks_desc-mean_bold.nii.gz"};
    if (REPORT_IS_BUILT) {
        EXPECT_EQ(run->err, "");
    } else {
        std::erase(names, "report.html");
        EXPECT_EQ(run->err, "znica: no report.html was written because its template is not installed.\n");
    }
    EXPECT_THAT(namesIn(*folder / "result"), ElementsAreArray(names));
    EXPECT_THAT(namesIn(*folder / "result/plugin"),
                ElementsAre("Covariance.txt", "ICA.vox", "ParamsMatrix.txt", "sub-sim_task-blocks_bold.eig",
                            "sub-sim_task-blocks_bold_ICA.rtc"));
}

TEST_F(RunResult, MapsAreOnTheGridOfTheInputAndZeroOutsideTheMask) {
    const ReadNifti input(sample("bold.nii.gz"));
    const ReadNifti maps(result("components.nii.gz"));
    EXPECT_THAT(maps.dim, ElementsAre(4, input.dim[1], input.dim[2], input.dim[3], 6, 1, 1, 1));
    EXPECT_EQ(maps.dataType, 16);
    EXPECT_EQ(maps.units, 2 | 8);
    EXPECT_EQ(maps.qformCode, input.qformCode);
    EXPECT_EQ(maps.sformCode, input.sformCode);
    EXPECT_EQ(maps.sform, input.sform);
    EXPECT_EQ(maps.quaternAndOffset, input.quaternAndOffset);

    const auto mask = ReadNifti(sample("desc-brain_mask.nii.gz")).values<unsigned char>();
    const auto values = maps.values<float>();
    ASSERT_EQ(values.size(), 6 * mask.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        ASSERT_TRUE(std::isfinite(values[i]));
        ASSERT_EQ(values[i] != 0.0f, mask[i % mask.size()] != 0) << i;
    }
}

TEST_F(RunResult, EveryMapIsALinearCombinationOfTheVolumes) {
    // Independent of the plug-in's arithmetic: a map is a linear combination of the volumes (spatial means removed), so
    // regressing it on them must leave nothing. The six maps lie in the space of six principal directions, and the
    // residual of the regression on all 80 volumes, by Gram-Schmidt, is at rounding level.
    const auto mask = ReadNifti(sample("desc-brain_mask.nii.gz")).values<unsigned char>();
    const auto data = ReadNifti(sample("bold.nii.gz")).values<std::int16_t>();
    const auto maps = ReadNifti(result("components.nii.gz")).values<float>();
    const auto inside = [&](const auto& values, std::size_t image) {
        std::vector<double> chosen;
        double mean = 0.0;
        for (std::size_t v = 0; v < mask.size(); ++v) {
            if (mask[v] != 0) chosen.push_back(static_cast<double>(values[image * mask.size() + v]));
        }
        for (const double value : chosen) mean += value / static_cast<double>(chosen.size());
        for (double& value : chosen) value -= mean;
        return chosen;
    };
    const auto dot = [](const std::vector<double>& a, const std::vector<double>& b) {
        double sum = 0.0;
        for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
        return sum;
    };
    const auto subtract = [&](std::vector<double>& from, const std::vector<double>& direction) {
        const double share = dot(from, direction);
        for (std::size_t i = 0; i < from.size(); ++i) from[i] -= share * direction[i];
    };
    std::vector<std::vector<double>> directions;
    for (std::size_t t = 0; t < data.size() / mask.size(); ++t) {
        std::vector<double> volume = inside(data, t);
        for (int twice = 0; twice < 2; ++twice) {
            for (const auto& direction : directions) subtract(volume, direction);
        }
        const double length = std::sqrt(dot(volume, volume));
        for (double& value : volume) value /= length;
        directions.push_back(std::move(volume));
    }
    for (std::size_t c = 0; c < 6; ++c) {
        std::vector<double> map = inside(maps, c);
        const double before = dot(map, map);
        for (const auto& direction : directions) subtract(map, direction);
        EXPECT_LT(dot(map, map) / before, 1e-10) << c; // single precision keeps 7 digits: 1e-14 of the squares
    }
}

TEST_F(RunResult, TheKnownSourcesAreFound) {
    const CommandResult score = znica({"score", result(""), "--truth", sample("")});
    EXPECT_EQ(score.status, 0);
    std::istringstream lines(score.out);
    std::string header;
    std::getline(lines, header);
    for (const char* expected : {"blocks", "drift", "pulse", "blocks-b"}) {
        std::string source, component;
        double correlation = 0.0;
        lines >> source >> component >> correlation;
        EXPECT_EQ(source, expected);
        EXPECT_GT(correlation, 0.9) << source; // 2,300 voxels and 80 volumes are few
    }
}

TEST_F(RunResult, TimeCoursesAgreeWithTheRtcFile) {
    const auto table = tableIn(result("mixing.tsv"));
    ASSERT_EQ(table.size(), 81U);
    EXPECT_THAT(table[0], ElementsAre("ICA_00", "ICA_01", "ICA_02", "ICA_03", "ICA_04", "ICA_05"));
    std::istringstream rtc(textOf(*folder / "result/plugin/sub-sim_task-blocks_bold_ICA.rtc"));
    std::string line;
    for (int i = 0; i < 6; ++i) std::getline(rtc, line);
    for (std::size_t t = 1; t < table.size(); ++t) {
        for (const std::string& cell : table[t]) {
            double expected = 0.0;
            rtc >> expected;
            ASSERT_NEAR(std::stod(cell), expected, 1e-6); // six digits in the RTC file, values up to 1
        }
    }
}

TEST_F(RunResult, TheMetricsTableHasOneRowPerComponentAndOneDescriptionPerColumn) {
    const auto table = tableIn(result("metrics.tsv"));
    ASSERT_EQ(table.size(), 7U);
    const json description = json::parse(textOf(result("metrics.json")));
    for (const std::string& column : table[0]) {
        ASSERT_TRUE(description.contains(column)) << column;
        EXPECT_FALSE(description[column].value("Description", "").empty()) << column;
        EXPECT_TRUE(description[column].contains("Units") || description[column].contains("Levels")) << column;
    }
    EXPECT_EQ(description.size(), table[0].size());
    EXPECT_EQ(description["dm_pred_index"]["Levels"], (json{{"1", "blocks"}, {"2", "blocks-b"}}));
    EXPECT_EQ(description["template_voi_index"]["Levels"]["3"], "pulse");
    ASSERT_EQ(table[0].size(), 23U); // component, sixteen parameters, three measures, two names, classification
    for (std::size_t row = 1; row < table.size(); ++row) {
        ASSERT_EQ(table[row].size(), 23U);
        EXPECT_EQ(table[row][0], "ICA_0" + std::to_string(row - 1));
        EXPECT_EQ(table[row][22], "n/a");
    }
}

TEST_F(RunResult, ExplainedVariancesAddUpToTheVarianceKeptOverTime) {
    // Two ways: from the maps and the data, and from the eigenpairs of the covariance.
    const auto table = tableIn(result("metrics.tsv"));
    ASSERT_EQ(table[0][17], "explained_variance");
    double sum = 0.0;
    for (std::size_t row = 1; row < table.size(); ++row) sum += std::stod(table[row][17]);
    const json facts = json::parse(textOf(result("decomposition.json")));
    EXPECT_NEAR(sum, facts["RetainedVarianceOverTimePercent"].get<double>(), 1e-3); // maps in single precision
    EXPECT_LT(sum, 99.0); // of everything, the mean image included, it would be more
    char line[80];
    std::snprintf(line, sizeof line, "%.2f %% of the variance over time kept", sum);
    EXPECT_THAT(run->out, HasSubstr(line));
}

TEST_F(RunResult, TimeCoursesInUnitsOfTheDataAreThoseOfTheMixingTableBeforeRescaling) {
    const auto courses = tableIn(result("timeseries.tsv"));
    const auto rescaled = tableIn(result("mixing.tsv"));
    ASSERT_EQ(courses.size(), rescaled.size());
    ASSERT_EQ(courses[0].size(), 7U);
    EXPECT_EQ(courses[0][6], "spatial_mean");
    for (std::size_t c = 0; c < 6; ++c) {
        double low = INFINITY;
        double high = -INFINITY;
        for (std::size_t t = 1; t < courses.size(); ++t) {
            low = std::min(low, std::stod(courses[t][c]));
            high = std::max(high, std::stod(courses[t][c]));
        }
        for (std::size_t t = 1; t < courses.size(); ++t) {
            ASSERT_NEAR((std::stod(courses[t][c]) - low) / (high - low), std::stod(rescaled[t][c]), 1e-4);
        }
    }
    const json description = json::parse(textOf(result("timeseries.json")));
    for (const std::string& column : courses[0]) {
        EXPECT_THAT(description[column]["Units"].get<std::string>(), HasSubstr("units of the analysed data")) << column;
    }
}

TEST_F(RunResult, TheDecompositionRecordsSettingsEigenvaluesAndComponents) {
    const json facts = json::parse(textOf(result("decomposition.json")));
    EXPECT_EQ(facts["Settings"]["Components"], 6);
    EXPECT_EQ(facts["Settings"]["Nonlinearity"], "tanh");
    EXPECT_EQ(facts["Settings"]["Label"], "S01");
    EXPECT_EQ(facts["Input"]["Volumes"], 80);
    EXPECT_EQ(facts["Input"]["RepetitionTimeMilliseconds"], 2000);
    EXPECT_EQ(facts["ComponentsFound"], 6);
    ASSERT_EQ(facts["Components"].size(), 6U);
    EXPECT_EQ(facts["Components"][2]["Name"], "ICA_02");
    EXPECT_EQ(facts["Components"][2]["PluginName"], "Subject S01: IC3");
    EXPECT_GE(facts["Components"][2]["Iterations"].get<int>(), 1);
    EXPECT_EQ(facts["Components"][2]["Metrics"].size(), 16U);

    const auto values = facts["Eigenvalues"].get<std::vector<double>>();
    ASSERT_EQ(values.size(), 80U);
    double all = 0.0;
    double kept = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_LE(values[i], values[i > 0 ? i - 1 : 0]);
        all += values[i];
        if (i < 6) kept += values[i];
    }
    EXPECT_NEAR(facts["RetainedVariancePercent"].get<double>(), 100.0 * kept / all, 1e-4);
}

TEST_F(RunResult, NoElapsedTimeIsCountedTwice) {
    const json seconds = json::parse(textOf(result("decomposition.json")))["ElapsedSeconds"];
    double parts = 0.0;
    for (const char* part : {"Reading", "Plugin", "Writing"}) {
        EXPECT_GE(seconds[part].get<double>(), 0.0) << part;
        parts += seconds[part].get<double>();
    }
    EXPECT_LE(parts, seconds["Total"].get<double>());
}

TEST_F(RunResult, TheStatusSaysDone) {
    const json status = json::parse(textOf(*folder / "result/status.json"));
    EXPECT_EQ(status["status"], "done");
    EXPECT_EQ(status["exit_status"], 0);
}

TEST_F(RunResult, TheLogEndsWithThePluginsLastLines) {
    EXPECT_TRUE(textOf(*folder / "result/log.txt").ends_with("// Plugin>  ICA Plugin completed!\n \n"));
    EXPECT_THAT(run->out, HasSubstr("6 of 6 components found\n"));
}

TEST_F(RunResult, EveryNonlinearityRunsToTheEnd) {
    for (const char* name : {"gauss", "cube"}) {
        const CommandResult other =
            znica({"run", sample("bold.nii.gz"), "--mask", sample("desc-brain_mask.nii.gz"), "--components", "5",
                   "--nonlinearity", name, "--seed", "1", "--no-clustering", "--out", (*folder / name).string()});
        EXPECT_EQ(other.status, 0) << other.err;
    }
}

TEST_F(RunResult, EveryNonlinearityFindsTheSourcesOfTheDefaultSample) {
    const TemporaryFolder place;
    const std::string stem = (place / "sample/sub-sim_task-blocks_").string();
    ASSERT_EQ(znica({"simulate", "--out", (place / "sample").string()}).status, 0);
    for (const char* name : {"tanh", "gauss", "cube"}) {
        const std::string out = (place / name).string();
        const CommandResult other =
            znica({"run", stem + "bold.nii.gz", "--mask", stem + "desc-brain_mask.nii.gz", "--components", "9",
                   "--nonlinearity", name, "--seed", "1", "--no-clustering", "--no-report", "--out", out});
        ASSERT_EQ(other.status, 0) << other.err;
        std::istringstream lines(znica({"score", out, "--truth", (place / "sample").string()}).out);
        std::string line;
        std::getline(lines, line); // the header
        int sources = 0;
        while (std::getline(lines, line) && !line.starts_with("lowest")) {
            EXPECT_GT(std::stod(line.substr(line.find_last_of(' '))), 0.95) << name << ": " << line;
            ++sources;
        }
        EXPECT_EQ(sources, 8);
    }
}

TEST_F(RunResult, GivingUpKeepsWhatWasFoundAndSaysSo) {
    // The 20 largest directions of white noise differ only by chance: thirty iterations do not suffice for all.
    NiftiBytes noise;
    noise.dim[4] = 24;
    std::uint32_t state = 7;
    for (int i = 0; i < 6 * 5 * 4 * 24; ++i) {
        int sum = 0;
        for (int j = 0; j < 12; ++j) sum += static_cast<int>((state = state * 1664525U + 1013904223U) >> 24);
        noise.append(static_cast<std::int16_t>(sum));
    }
    writeFile(*folder / "noise.nii", noise.bytes());
    std::vector<std::string> arguments = {"run",
                                          (*folder / "noise.nii").string(),
                                          "--components",
                                          "20",
                                          "--max-iterations",
                                          "30",
                                          "--seed",
                                          "1",
                                          "--force",
                                          "--no-report",
                                          "--out",
                                          (*folder / "gave-up").string()};
    const CommandResult gaveUp = znica(arguments);
    ASSERT_EQ(gaveUp.status, 4) << gaveUp.err << gaveUp.out;
    if (std::filesystem::exists(*folder / "gave-up")) {
        const json status = json::parse(textOf(*folder / "gave-up/status.json"));
        EXPECT_EQ(status["status"], "gave up");
        EXPECT_EQ(status["exit_status"], 4);
        EXPECT_LT(status["components_found"].get<int>(), 20);
        EXPECT_GE(status["components_found"].get<int>(), 1);
        EXPECT_THAT(gaveUp.out, HasSubstr("the others did not converge"));
        EXPECT_EQ(gaveUp.err, "znica: " + std::to_string(status["components_found"].get<int>()) +
                                  " of 20 components found; allow more iterations with --max-iterations or a larger "
                                  "threshold with --epsilon; the partial result is in " +
                                  (*folder / "gave-up").string() + ".\n");
    } else {
        EXPECT_THAT(gaveUp.err, HasSubstr("no component converged"));
    }
    arguments.emplace_back("--quiet");
    const CommandResult quiet = znica(arguments);
    EXPECT_EQ(quiet.status, 4);
    EXPECT_EQ(quiet.out, "");
    EXPECT_EQ(quiet.err, gaveUp.err);
}

TEST_F(RunResult, NamesMayContainBlanksAndNonAsciiLetters) {
    const auto odd = *folder / "m\xC3\xA4nner und frauen";
    std::filesystem::create_directory(odd);
    writeFile(odd / "Scan \xE8\x84\xB3.nii", plainSeries(24).bytes());
    const CommandResult named =
        znica({"run", "Scan \xE8\x84\xB3.nii", "--components", "1", "--seed", "1", "--out", "Aus gabe"}, {odd, {}, {}});
    EXPECT_EQ(named.status, 0) << named.err;
    EXPECT_TRUE(std::filesystem::exists(odd / "Aus gabe" / "Scan \xE8\x84\xB3_desc-ICA_components.nii.gz"));
}

TEST_F(RunResult, EveryNumericTypeOfTheSameValuesGivesTheSameEigenvalues) {
    const auto eigenvalues = [&](const NiftiBytes& image, const std::string& name) {
        writeFile(*folder / (name + ".nii"), image.bytes());
        const CommandResult typed = znica({"run", (*folder / (name + ".nii")).string(), "--components", "1", "--seed",
                                           "1", "--out", (*folder / name).string()});
        EXPECT_EQ(typed.status, 0) << name << typed.err;
        return json::parse(textOf(*folder / name / (name + "_desc-ICA_decomposition.json")))["Eigenvalues"];
    };
    const auto image = [](auto type, std::int16_t code) {
        NiftiBytes bytes;
        bytes.dim[4] = 24;
        bytes.dataType = code;
        bytes.bitsPerVoxel = 8 * sizeof(type);
        std::uint32_t state = 3;
        for (int i = 0; i < 6 * 5 * 4 * 24; ++i) {
            state = state * 1664525U + 1013904223U;
            bytes.append(static_cast<decltype(type)>(state >> 25)); // 0 to 127 fits every type
        }
        return bytes;
    };
    const json reference = eigenvalues(image(std::int16_t{}, 4), "int16");
    EXPECT_EQ(eigenvalues(image(std::uint8_t{}, 2), "uint8"), reference);
    EXPECT_EQ(eigenvalues(image(std::int8_t{}, 256), "int8"), reference);
    EXPECT_EQ(eigenvalues(image(std::uint16_t{}, 512), "uint16"), reference);
    EXPECT_EQ(eigenvalues(image(std::int32_t{}, 8), "int32"), reference);
    EXPECT_EQ(eigenvalues(image(std::uint32_t{}, 768), "uint32"), reference);
    EXPECT_EQ(eigenvalues(image(std::int64_t{}, 1024), "int64"), reference);
    EXPECT_EQ(eigenvalues(image(std::uint64_t{}, 1280), "uint64"), reference);
    EXPECT_EQ(eigenvalues(image(float{}, 16), "float32"), reference);
    EXPECT_EQ(eigenvalues(image(double{}, 64), "float64"), reference);
}

} // namespace
} // namespace zn::test
