// Compares "ParamsMatrix.txt" of a whole run with the same table recomputed from the maps and the RTC file.

#include "host/host_fixture.h"
#include "host/recomputed_parameters.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace zn::test {
namespace {

constexpr std::size_t kTemporalEntropy = 5; // column

class RecomputedParameters : public HostFixture {
protected:
    // Time courses in the RTC file, one row per component.
    static Rows timeCoursesIn(const std::string& rtc, std::size_t components) {
        Rows rows(components);
        std::istringstream numbers(rtc.substr(rtc.find("\"TC")));
        std::string line;
        std::getline(numbers, line); // the names
        for (double value = 0; numbers >> value;) {
            for (std::size_t k = 0; k < components; ++k) {
                rows[k].push_back(value);
                if (k + 1 < components) numbers >> value;
            }
        }
        return rows;
    }
};

TEST_F(RecomputedParameters, MatchTheParameterFileOfTheRun) {
    constexpr std::size_t components = 5;
    sources = giveSimulatedVtc(host, 16, 16, 12, 120, components);
    host.dialogStrings[1] = "some.msk";
    host.mask.emplace();
    for (std::size_t g = 0; g < 16U * 16U * 12U; ++g) host.mask->push_back(g % 16 != 0 && g % 5 != 0);
    host.dialogIntegers[7] = components;
    host.dialogIntegers[9] = components;
    host.clusterSize = 3;
    host.zThreshold = 1.5f;
    ASSERT_TRUE(run());
    ASSERT_EQ(host.maps.size(), components);

    Rows maps(components);
    std::vector<std::vector<int>> coordinates;
    for (std::size_t g = 0; g < host.mask->size(); ++g) {
        if ((*host.mask)[g] == 0) continue;
        coordinates.push_back({static_cast<int>(g % 16), static_cast<int>(g / 16 % 16), static_cast<int>(g / 256)});
        for (std::size_t k = 0; k < components; ++k) maps[k].push_back(static_cast<double>(host.maps[k].voxels[g]));
    }
    const Rows timeCourses = timeCoursesIn(platformTextOf("run1_ICA.rtc"), components);
    const Rows expected = recomputedParameters(maps, coordinates, timeCourses, 2, 1.5, 3);

    const double tolerance = 5e-4; // single precision over two thousand voxels, six digits in both files
    std::istringstream file(platformTextOf("ParamsMatrix.txt"));
    std::vector<double> entropies;
    for (std::size_t k = 0; k < components; ++k) {
        for (std::size_t column = 0; column < 11; ++column) {
            double written = 0;
            ASSERT_TRUE(file >> written);
            if (column == kTemporalEntropy) {
                entropies.push_back(written);
            } else {
                EXPECT_NEAR(written, expected[k][column], tolerance) << "component " << k << " column " << column;
            }
        }
    }

    bool found = false;
    for (unsigned lost = 0; lost < 1U << components && !found; ++lost) {
        const auto recomputed = temporalEntropies(timeCourses, lost);
        found = std::equal(entropies.begin(), entropies.end(), recomputed.begin(),
                           [&](double a, double b) { return std::fabs(a - b) < tolerance; });
    }
    EXPECT_TRUE(found) << testing::PrintToString(entropies);
}

} // namespace
} // namespace zn::test
