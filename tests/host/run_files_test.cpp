// The files that a run leaves behind.

#include "host/host_fixture.h"

#include <cmath>
#include <cstring>
#include <sstream>

namespace zn::test {
namespace {

namespace fs = std::filesystem;

class RunFiles : public HostFixture {};

std::vector<double> doublesIn(const std::string& bytes) {
    std::vector<double> values(bytes.size() / sizeof(double));
    std::memcpy(values.data(), bytes.data(), values.size() * sizeof(double));
    return values;
}

// Rows of a text of numbers.
std::vector<std::vector<double>> numbersIn(const std::string& text) {
    std::vector<std::vector<double>> rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        rows.emplace_back();
        std::istringstream numbers(line);
        for (std::string word; numbers >> word;) rows.back().push_back(std::stod(word)); // "nan" included
    }
    return rows;
}

TEST_F(RunFiles, ListTheVoxelsOfTheMaskInGridOrder) {
    host.dialogStrings[1] = "some.msk";
    host.mask.emplace(240, static_cast<unsigned char>(0));
    for (std::size_t g : {0U, 4U, 9U, 50U, 239U}) (*host.mask)[g] = 1;
    host.header.volumes = 4; // fewer volumes than voxels; the rest of the data is not read
    run();
    // index = z * 48 + y * 8 + x: 50 is x 2, y 0, z 1; 239 is x 7, y 5, z 4
    EXPECT_EQ(platformTextOf("ICA.vox"), "     5 \n"
                                         "    1     1     1 \n"
                                         "    5     1     1 \n"
                                         "    2     2     1 \n"
                                         "    3     1     2 \n"
                                         "    8     6     5 \n");
}

TEST_F(RunFiles, CountWholeVoxelsOfABoundingBoxWithARemainder) {
    run();
    const std::string whole = platformTextOf("ICA.vox");
    host.header.xEnd += 1;
    host.header.yEnd += 2;
    host.header.zEnd += 2;
    run();
    EXPECT_THAT(host.log(), testing::Contains("// Plugin>  Number of used VTC voxels: 240"));
    EXPECT_EQ(platformTextOf("ICA.vox"), whole);
}

TEST_F(RunFiles, HoldTheCovarianceOfTheCentredData) {
    run();
    const auto rows = numbersIn(platformTextOf("Covariance.txt"));
    ASSERT_EQ(rows.size(), 12U);
    // Independently: mean over voxels subtracted from each volume, products summed, divided by the number of voxels.
    const auto value = [&](std::size_t v, std::size_t t) { return static_cast<double>(host.floats[v * 12 + t]); };
    for (std::size_t i = 0; i < 12; ++i) {
        ASSERT_EQ(rows[i].size(), 12U);
        for (std::size_t j = 0; j < 12; ++j) {
            double meanI = 0, meanJ = 0, sum = 0;
            for (std::size_t v = 0; v < 240; ++v) {
                meanI += value(v, i) / 240;
                meanJ += value(v, j) / 240;
            }
            for (std::size_t v = 0; v < 240; ++v) sum += (value(v, i) - meanI) * (value(v, j) - meanJ);
            EXPECT_NEAR(rows[i][j], sum / 240, 1e-5 * std::fabs(sum / 240) + 1e-9); // six digits in the file
        }
    }
}

TEST_F(RunFiles, HoldEigenpairsThatSatisfyTheEigenvalueEquation) {
    run();
    const auto values = doublesIn(contentOf("run1.eig"));
    ASSERT_EQ(values.size(), 12U + 12U * 12U);
    const auto covariance = numbersIn(platformTextOf("Covariance.txt"));
    for (std::size_t k = 0; k + 1 < 12; ++k) EXPECT_GE(values[k], values[k + 1]);
    for (std::size_t k = 0; k < 12; ++k) {
        for (std::size_t r = 0; r < 12; ++r) {
            double product = 0;
            for (std::size_t c = 0; c < 12; ++c) product += covariance[r][c] * values[12 + c * 12 + k];
            EXPECT_NEAR(product, values[k] * values[12 + r * 12 + k], 2e-5 * values[0]); // six digits in the text
        }
    }
}

TEST_F(RunFiles, HoldTheTimeCoursesOfTheMapsAsADesignMatrix) {
    run();
    const std::string text = platformTextOf("run1_ICA.rtc");
    EXPECT_EQ(text.substr(0, text.find("\"TC1\"")), "FileVersion:     2\n"
                                                    "Type:            DesignMatrix\n"
                                                    "NrOfPredictors:  3\n"
                                                    "NrOfDataPoints:  12\n"
                                                    "\n");
    const auto rows = numbersIn(text.substr(text.find("\"TC3\" \n") + 7));
    ASSERT_EQ(rows.size(), 12U);
    for (std::size_t t = 0; t < 12; ++t) {
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR(rows[t][k], static_cast<double>(host.maps[k].timeCourse[t]), 1e-5);
        }
    }
}

TEST_F(RunFiles, HaveOneParameterRowPerComponent) {
    run();
    const auto rows = numbersIn(platformTextOf("ParamsMatrix.txt"));
    ASSERT_EQ(rows.size(), 3U);
    for (const auto& row : rows) EXPECT_EQ(row.size(), 11U);
}

TEST_F(RunFiles, AreOverwrittenByTheNextRun) {
    run();
    const std::string voxels = contentOf("ICA.vox");
    const std::string covariance = contentOf("Covariance.txt");
    run();
    EXPECT_EQ(contentOf("ICA.vox"), voxels);
    EXPECT_EQ(contentOf("Covariance.txt"), covariance);
}

TEST_F(RunFiles, LieBesideTheVtcWhereverItIs) {
    fs::create_directory("data");
    host.dialogStrings[0] = "data/my run.vtc";
    run();
    EXPECT_TRUE(fs::exists("data/my run.eig"));
    EXPECT_TRUE(fs::exists("data/my run_ICA.rtc"));
    EXPECT_TRUE(fs::exists("ICA.vox"));
}

TEST_F(RunFiles, OfAVtcWithAFourCharacterNameDropThatNameEntirely) {
    host.dialogStrings[0] = ".vtc";
    run();
    EXPECT_TRUE(fs::exists(".eig"));
    EXPECT_TRUE(fs::exists("_ICA.rtc"));
}

TEST_F(RunFiles, ThatCannotBeWrittenDoNotStopTheRun) {
    for (const char* name : {"ICA.vox", "Covariance.txt", "ParamsMatrix.txt", "run1.eig", "run1_ICA.rtc"}) {
        fs::create_directory(name); // a folder where the file belongs
    }
    EXPECT_TRUE(run());
    EXPECT_EQ(host.log().back(), " ");
    EXPECT_EQ(host.maps.size(), 3U);
}

TEST_F(RunFiles, AcceptANameThatFillsTheHostsBuffer) {
    // The host writes 256 characters without a terminating zero. Most of them mean "this folder", so that every
    // platform can open the path.
    std::string& name = host.dialogStrings[0];
    name.clear();
    while (name.size() < 220) name += "./";
    name.append(80, 'v');
    EXPECT_TRUE(run());
    EXPECT_TRUE(fs::exists(std::string(251 - 220, 'v') + ".eig"));
}

} // namespace
} // namespace zn::test
