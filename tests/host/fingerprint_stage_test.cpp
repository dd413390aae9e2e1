// The fingerprint within a run: what the user is asked, what the host is asked for, and where the values go.

#include "host/host_fixture.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zn::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// Positions of the map parameters.
enum Parameter : std::size_t {
    kDesignMax,
    kDesignIndex,
    kRms,
    kTemplateMax,
    kTemplateIndex,
    kClustering,
    kFirstOfFile, // "Skewness": from here on the parameter file holds the same values
};

class FingerprintStage : public HostFixture {
protected:
    std::vector<float> values(std::size_t parameter) const {
        std::vector<float> result;
        for (const auto& map : host.maps) result.push_back(map.parameters[parameter]);
        return result;
    }

    // Index of the component whose map is nearest to a source.
    std::size_t componentOf(std::size_t source) const {
        std::vector<double> r;
        for (const auto& map : host.maps) {
            r.push_back(absoluteCorrelation({map.voxels.begin(), map.voxels.end()}, sources.maps[source]));
        }
        return static_cast<std::size_t>(std::max_element(r.begin(), r.end()) - r.begin());
    }

    std::vector<float> timeCourse(std::size_t source) const {
        return {sources.timeCourses[source].begin(), sources.timeCourses[source].end()};
    }
};

// Enough voxels for every random start to lead to the sources.
class FingerprintOfSources : public FingerprintStage {
protected:
    static constexpr int kX = 16, kY = 12, kZ = 10;
    FingerprintOfSources() { sources = giveSimulatedVtc(host, kX, kY, kZ, 12, 3); }

    // Anatomical voxels x, y, z where a source is strong and positive.
    std::vector<std::array<int, 3>> strongVoxels(std::size_t source) const {
        std::vector<std::array<int, 3>> voxels;
        for (int g = 0; g < kX * kY * kZ; ++g) {
            if (sources.maps[source][static_cast<std::size_t>(g)] < 1.0) continue;
            voxels.push_back({57 + 3 * (g % kX), 52 + 3 * (g / kX % kY), 59 + 3 * (g / (kX * kY))});
        }
        return voxels;
    }
};

TEST_F(FingerprintStage, AsksForTheThresholdsWithTheBusyCursorOff) {
    run();
    const auto asked = std::find_if(host.calls.begin(), host.calls.end(),
                                    [](const std::string& call) { return call.starts_with("znGetIntegerInput"); });
    ASSERT_NE(asked, host.calls.end());
    EXPECT_EQ(*(asked - 1), "znStopBusyCursor()");
    EXPECT_EQ(*(asked + 1), "znGetFloatInput(Z threshold for maps:, 2.5, 0.1, 100)");
}

TEST_F(FingerprintStage, SkipsTheClusteringWhenTheFirstQuestionIsCancelled) {
    for (int answer : {-1, 0, 1}) {
        host.clusterSize = answer;
        EXPECT_TRUE(run());
        EXPECT_THAT(host.boxes(),
                    ElementsAre("You have chosen not to estimate the clustering function.\n"
                                "Component fingerprint will thus miss one parameter and may not be usable!"));
        EXPECT_THAT(host.calls, Not(Contains(StartsWith("znGetFloatInput"))));
        EXPECT_THAT(values(kClustering), Each(0.0f));
        std::istringstream file(platformTextOf("ParamsMatrix.txt"));
        std::string line;
        for (std::size_t k = 0; k < host.maps.size(); ++k) {
            ASSERT_TRUE(std::getline(file, line));
            EXPECT_EQ(std::stod(line), 0.0) << line;
        }
    }
}

TEST_F(FingerprintStage, ClustersWithTheUsersAnswers) {
    host.clusterSize = 2;
    host.zThreshold = 0.0f; // every voxel of one sign counts, and nearly all have a neighbour of the same sign
    run();
    EXPECT_THAT(values(kClustering), Each(testing::Gt(0.9f)));
    host.clusterSize = 2000; // more than there are voxels
    run();
    EXPECT_THAT(values(kClustering), Each(0.0f));
}

TEST_F(FingerprintStage, DividesTheClusteringByItsLargestValueInTheFileOnly) {
    host.clusterSize = 3;
    host.zThreshold = 1.0f;
    run();
    const auto degrees = values(kClustering);
    const float largest = *std::max_element(degrees.begin(), degrees.end());
    ASSERT_GT(largest, 0.0f);
    ASSERT_LT(largest, 1.0f);
    std::istringstream file(platformTextOf("ParamsMatrix.txt"));
    std::string line;
    for (std::size_t k = 0; std::getline(file, line); ++k) {
        EXPECT_NEAR(std::stod(line), static_cast<double>(degrees[k] / largest), 1e-5);
    }
}

TEST_F(FingerprintStage, WithoutADesignMatrixMatchesNothingButReportsPredictorOne) {
    run();
    EXPECT_THAT(values(kDesignMax), Each(0.0f));
    EXPECT_THAT(values(kDesignIndex), Each(1.0f));
    EXPECT_THAT(host.calls, Not(Contains(StartsWith("znLoadSingleStudyGLMDesignMatrix"))));
}

TEST_F(FingerprintStage, LogsThatTheDesignMatrixWasNotFoundAndContinues) {
    host.dialogStrings[3] = "missing.rtc";
    host.loadsDesignMatrix = false;
    EXPECT_TRUE(run());
    EXPECT_THAT(host.log(), Contains("// Plugin>  The provided RTC/SDM file was not found!"));
    EXPECT_THAT(host.calls, Not(Contains(StartsWith("znGetPredictor"))));
    EXPECT_THAT(values(kDesignIndex), Each(1.0f));
}

TEST_F(FingerprintOfSources, FindTheirPredictors) {
    host.dialogStrings[3] = "design.rtc";
    host.predictors = {timeCourse(2), timeCourse(0), timeCourse(1)};
    run();
    const std::size_t predictorOf[3] = {2, 3, 1};
    for (std::size_t s = 0; s < 3; ++s) {
        const auto& parameters = host.maps[componentOf(s)].parameters;
        EXPECT_GT(parameters[kDesignMax], 0.95f);
        EXPECT_EQ(parameters[kDesignIndex], static_cast<float>(predictorOf[s]));
    }
}

TEST_F(FingerprintStage, MatchesAPredictorThatIsTheTimeCourseOrItsOppositeExactly) {
    // A single component, whose time course is the same from any random start except for its sign.
    host.dialogIntegers[6] = host.dialogIntegers[7] = host.dialogIntegers[9] = 1;
    run();
    ASSERT_EQ(host.maps.size(), 1U);
    const std::vector<float> same = host.maps[0].timeCourse;
    std::vector<float> opposite = same;
    for (float& value : opposite) value = -value;
    host.dialogStrings[3] = "design.rtc";
    for (const auto& predictor : {same, opposite}) {
        host.predictors = {std::vector<float>(12, 1.0f), std::vector<float>(12, 0.0f), predictor};
        run();
        EXPECT_NEAR(host.maps.back().parameters[kDesignMax], 1.0f, 1e-4f);
        EXPECT_EQ(host.maps.back().parameters[kDesignIndex], 3.0f);
    }
}

TEST_F(FingerprintStage, AsksForNoMoreThanSixteenPredictors) {
    host.dialogStrings[3] = "design.rtc";
    host.predictors.assign(20, std::vector<float>(12, 0.0f));
    run();
    EXPECT_THAT(host.calls, Contains("znGetPredictor(15)"));
    EXPECT_THAT(host.calls, Not(Contains("znGetPredictor(16)")));
}

TEST_F(FingerprintStage, StopsAtTheFirstMissingPredictor) {
    host.dialogStrings[3] = "design.rtc";
    host.predictors.assign(2, std::vector<float>(12, 0.0f));
    run();
    EXPECT_THAT(host.argumentsOf("znGetPredictor"), ElementsAre("0", "1", "2"));
}

TEST_F(FingerprintStage, LoadsTheVoisBeforeTheVtcAndFetchesThemAfterTheVoxelCount) {
    host.dialogStrings[4] = "regions.voi";
    host.vois = {{57, 52, 59}};
    run();
    const auto position = [&](const std::string& call) {
        return std::find(host.calls.begin(), host.calls.end(), call) - host.calls.begin();
    };
    EXPECT_LT(position("znLoadVOIs(regions.voi)"), position("znLinkVTCToCurrentVMR(run1.vtc, 1)"));
    EXPECT_LT(position("znLogText(// Plugin>  Number of used VTC voxels: 240)"), position("znGetVOIs()"));
    EXPECT_EQ(position("znGetVOIs()") + 1,
              position("znLogText(// Plugin>  Number of VOIs currently defined (for spatial template): 1)"));
}

TEST_F(FingerprintOfSources, FindTheirRegions) {
    host.dialogStrings[4] = "regions.voi";
    host.vois.resize(4); // the second one stays empty
    const std::size_t regionOf[3] = {1, 3, 4};
    for (std::size_t s = 0; s < 3; ++s) {
        for (const auto& [x, y, z] : strongVoxels(s)) {
            for (int c : {x, y, z}) host.vois[regionOf[s] - 1].push_back(c);
        }
    }
    run();
    for (std::size_t s = 0; s < 3; ++s) {
        const auto& parameters = host.maps[componentOf(s)].parameters;
        EXPECT_GT(parameters[kTemplateMax], 0.5f);
        EXPECT_EQ(parameters[kTemplateIndex], static_cast<float>(regionOf[s]));
    }
}

TEST_F(FingerprintOfSources, FindTheirRegionsInCentredSpace) {
    // The same voxels, in the order z, x, y and counting down from 128.
    host.dialogStrings[4] = "regions.voi";
    host.voiSpace = 3;
    host.vois.resize(3);
    for (std::size_t s = 0; s < 3; ++s) {
        for (const auto& [x, y, z] : strongVoxels(s)) {
            for (int c : {128 - z, 128 - x, 128 - y}) host.vois[s].push_back(c);
        }
    }
    run();
    for (std::size_t s = 0; s < 3; ++s) {
        const auto& parameters = host.maps[componentOf(s)].parameters;
        EXPECT_GT(parameters[kTemplateMax], 0.5f);
        EXPECT_EQ(parameters[kTemplateIndex], static_cast<float>(s + 1));
    }
}

TEST_F(FingerprintStage, WithoutVoisHasRegionZero) {
    run();
    EXPECT_THAT(values(kTemplateMax), Each(0.0f));
    EXPECT_THAT(values(kTemplateIndex), Each(0.0f));
}

TEST_F(FingerprintStage, WritesTheSameValuesToFileAndMaps) {
    run();
    std::istringstream file(platformTextOf("ParamsMatrix.txt"));
    for (const auto& map : host.maps) {
        std::string ignored;
        file >> ignored; // the degree of clustering, which differs on purpose
        for (std::size_t p = kFirstOfFile; p < 16; ++p) {
            std::string word;
            file >> word;
            const float written = std::stof(word);
            if (std::isnan(map.parameters[p])) {
                EXPECT_TRUE(std::isnan(written)) << p;
            } else {
                EXPECT_NEAR(written, map.parameters[p], 1e-5f) << p;
            }
        }
    }
}

TEST_F(FingerprintStage, YieldsNaNForOneComponentAndContinues) {
    host.dialogIntegers[7] = 1;
    host.dialogIntegers[9] = 1;
    EXPECT_TRUE(run());
    EXPECT_EQ(host.maps.size(), 1U);
    EXPECT_TRUE(std::isnan(host.maps[0].parameters[kFirstOfFile])); // 0 / 0 after the rescaling
    EXPECT_EQ(host.log().back(), " ");
}

TEST_F(FingerprintStage, TruncatesTheRepetitionTimeToWholeSeconds) {
    // The fifth band needs less than 6 s, the fourth less than 11 s; rescaling a missing band gives 0 / 0. With 200
    // volumes the spectrum is fine enough for every existing band to contain power.
    sources = giveSimulatedVtc(host, 8, 6, 5, 200, 3);
    const auto exists = [&](int milliseconds, std::size_t band) {
        host.header.repetitionTime = milliseconds;
        run();
        return !std::isnan(host.maps.front().parameters[10 + band]);
    };
    EXPECT_TRUE(exists(5999, 5));
    EXPECT_FALSE(exists(6000, 5));
    EXPECT_TRUE(exists(10999, 4));
    EXPECT_FALSE(exists(11000, 4));
}

TEST_F(FingerprintStage, GivesTheStandardDeviationOfTheTimeCourse) {
    run();
    for (const auto& map : host.maps) {
        const auto count = static_cast<double>(map.timeCourse.size());
        double sum = 0.0;
        for (float value : map.timeCourse) sum += static_cast<double>(value);
        double squares = 0.0;
        for (float value : map.timeCourse) squares += std::pow(static_cast<double>(value) - sum / count, 2);
        EXPECT_NEAR(static_cast<double>(map.parameters[kRms]), std::sqrt(squares / (count - 1)), 1e-5);
    }
}

TEST_F(FingerprintStage, SurvivesImpossibleRepetitionTimes) {
    for (int milliseconds : {0, 1, 999, -2000, std::numeric_limits<int>::max()}) {
        host.header.repetitionTime = milliseconds;
        EXPECT_TRUE(run()) << milliseconds;
    }
}

} // namespace
} // namespace zn::test
