// The component maps as the host receives them.

#include "host/host_fixture.h"

#include <cmath>

namespace zn::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Eq;
using testing::FloatEq;
using testing::IsEmpty;
using testing::SizeIs;

class MapOutput : public HostFixture {
protected:
    std::vector<std::string> mapNames() const {
        std::vector<std::string> names;
        for (const auto& map : host.maps) names.push_back(map.text());
        return names;
    }
};

TEST_F(MapOutput, NumbersTheMapsFromOneWhenTheLabelIsCancelled) {
    run();
    EXPECT_THAT(mapNames(), ElementsAre("IC 1", "IC 2", "IC 3"));
}

TEST_F(MapOutput, PutsTheLabelIntoTheNames) {
    host.label = "S01";
    run();
    EXPECT_THAT(mapNames(), ElementsAre("Subject S01: IC1", "Subject S01: IC2", "Subject S01: IC3"));
}

TEST_F(MapOutput, AcceptsAnEmptyLabel) {
    host.label = "";
    run();
    EXPECT_EQ(mapNames().front(), "Subject : IC1");
}

TEST_F(MapOutput, TruncatesALabelThatDoesNotFitAndKeepsTheNumber) {
    host.label = std::string(256, 'L'); // fills the whole buffer, without a terminating zero
    run();
    const std::string name = mapNames().back();
    EXPECT_THAT(name, SizeIs(255));
    EXPECT_EQ(name, "Subject " + std::string(255 - 8 - 5, 'L') + ": IC3");
    EXPECT_EQ(host.maps.back().name[255], '\0');
}

TEST_F(MapOutput, NamesTheSixteenParametersWithBandOneTwice) {
    run();
    std::vector<std::string> names;
    for (const auto& name : host.parameterNames) names.push_back(name.substr(0, name.find('\0')));
    EXPECT_THAT(names, ElementsAre("DM pred max", "DM pred index", "RMS", "Spatial Template (max corr)",
                                   "Spatial Template (VOI index)", "Degree of Clustering", "Skewness", "Kurtosis",
                                   "Spatial Entropy", "1-Lag Autocorr", "Temporal Entropy", "Power Spectrum Band 1",
                                   "Power Spectrum Band 1", "Power Spectrum Band 3", "Power Spectrum Band 4",
                                   "Power Spectrum Band 5"));
}

TEST_F(MapOutput, NamesTheSetAfterItsSources) {
    const std::string text = "the text in the VTC header";
    std::copy(text.begin(), text.end(), host.header.name);
    host.dialogStrings[4] = "regions.voi";
    host.hasVois = false;
    run();
    std::vector<std::string> names;
    for (const auto& name : host.setNames) names.push_back(name.substr(0, name.find('\0')));
    EXPECT_THAT(names, ElementsAre("run1.vtc", text, "regions.voi"));
}

TEST_F(MapOutput, TruncatesAHeaderTextThatExceedsTheHostsBuffer) {
    std::fill(std::begin(host.header.name), std::end(host.header.name), 'n');
    run();
    EXPECT_EQ(host.setNames[1], std::string(255, 'n') + '\0');
}

TEST_F(MapOutput, HandsOverBoundingBoxResolutionAndDisplayRange) {
    run();
    EXPECT_THAT(host.mapBox, ElementsAre(57, 81, 52, 70, 59, 74, 3)); // 8 x 6 x 5 voxels of 3
    EXPECT_THAT(host.displayRange, ElementsAre(0, 5, 5, 16));
}

TEST_F(MapOutput, GivesEveryMapTheComponentTypeAndSetsItOnce) {
    run();
    for (const auto& map : host.maps) {
        EXPECT_EQ(map.type, 12);
        EXPECT_EQ(map.timesSet, 1);
    }
}

TEST_F(MapOutput, FillsEveryGridVoxelWithoutAMask) {
    run();
    // The maps are projections of centred data, so each sums to zero over the voxels.
    for (const auto& map : host.maps) {
        ASSERT_THAT(map.voxels, SizeIs(240));
        double sum = 0, size = 0;
        for (float value : map.voxels) {
            sum += static_cast<double>(value);
            size += std::fabs(static_cast<double>(value));
        }
        EXPECT_LT(std::fabs(sum), 1e-5 * size);
    }
}

TEST_F(MapOutput, IsExactlyZeroOutsideTheMask) {
    host.dialogStrings[1] = "half.msk";
    host.mask.emplace(240);
    for (std::size_t g = 0; g < 240; ++g) (*host.mask)[g] = g % 3 == 0 ? 0 : (g % 3 == 1 ? 1 : 255);
    ASSERT_TRUE(run());
    for (const auto& map : host.maps) {
        for (std::size_t g = 0; g < 240; ++g) {
            EXPECT_EQ(map.voxels[g] == 0.0f, (*host.mask)[g] == 0) << g;
        }
    }
    EXPECT_THAT(recoveredMaps(host, sources), Each(testing::Gt(0.9))); // values lie at their own voxels
}

TEST_F(MapOutput, RescalesTheTimeCoursesToZeroToOne) {
    run();
    for (const auto& map : host.maps) {
        EXPECT_THAT(*std::min_element(map.timeCourse.begin(), map.timeCourse.end()), Eq(0.0f));
        EXPECT_THAT(*std::max_element(map.timeCourse.begin(), map.timeCourse.end()), Eq(1.0f));
    }
}

TEST_F(MapOutput, KeepsATimeCourseWithItsMap) {
    run();
    for (const auto& map : host.maps) {
        const std::vector<double> voxels(map.voxels.begin(), map.voxels.end());
        const std::vector<double> course(map.timeCourse.begin(), map.timeCourse.end());
        for (std::size_t s = 0; s < sources.maps.size(); ++s) {
            if (absoluteCorrelation(voxels, sources.maps[s]) < 0.95) continue;
            EXPECT_GT(absoluteCorrelation(course, sources.timeCourses[s]), 0.95) << s;
        }
    }
}

TEST_F(MapOutput, SkipsArraysThatTheHostDoesNotProvide) {
    host.givesTimeCourses = host.givesParameters = false;
    EXPECT_TRUE(run());
    EXPECT_THAT(mapNames(), ElementsAre("IC 1", "IC 2", "IC 3"));
    EXPECT_THAT(host.maps.front().timeCourse, IsEmpty());
}

TEST_F(MapOutput, SkipsOnlyArraysThatTheHostDoesNotProvide) {
    for (const bool givesTimeCourses : {true, false}) {
        host.givesTimeCourses = givesTimeCourses;
        host.givesParameters = !givesTimeCourses;
        EXPECT_TRUE(run());
        ASSERT_THAT(host.maps, SizeIs(3));
        for (const auto& map : host.maps) {
            EXPECT_THAT(map.timeCourse, SizeIs(givesTimeCourses ? 12 : 0));
            EXPECT_THAT(map.parameters, SizeIs(givesTimeCourses ? 0 : 16));
            EXPECT_THAT(map.voxels, testing::Contains(testing::Gt(1.0f)));
            EXPECT_EQ(map.type, 12);
            EXPECT_EQ(map.timesSet, 1);
        }
        EXPECT_THAT(host.calls, testing::Contains("znSaveNRVMPsOfCurrentVMR(maps.ica)"));
    }
}

TEST_F(MapOutput, SurvivesAHostThatHandsOutNoPointers) {
    host.givesTimeCourses = host.givesParameters = host.givesNames = host.givesMaps = false;
    EXPECT_TRUE(run());
    EXPECT_EQ(host.log().back(), " ");
}

} // namespace
} // namespace zn::test
