#include "headless/report/coarse_map.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;

// Accumulates the differences, as the page does.
std::vector<int> stepsIn(const CoarseMap& map) {
    std::vector<int> steps;
    unsigned sum = 0;
    for (const std::byte difference : map.bytes) {
        sum = (sum + std::to_integer<unsigned>(difference)) % 256;
        steps.push_back(sum < 128 ? static_cast<int>(sum) : static_cast<int>(sum) - 256);
    }
    return steps;
}

TEST(CoarseMap, RoundsValuesToFifths) {
    const CoarseMap map = packCoarsely(std::vector<float>{0.29f, 0.31f, -1.0f, -25.4f, 25.4f, 0.0f});
    EXPECT_DOUBLE_EQ(map.step, 0.2);
    EXPECT_THAT(stepsIn(map), ElementsAre(1, 2, -5, -127, 127, 0));
}

TEST(CoarseMap, TakesWiderStepsForALargeValue) {
    const CoarseMap map = packCoarsely(std::vector<float>{60.0f, -1.3f, 1.2f}); // 60 / 127 is 0.472
    EXPECT_DOUBLE_EQ(map.step, 0.5);
    EXPECT_THAT(stepsIn(map), ElementsAre(120, -3, 2));
}

TEST(CoarseMap, MarksNonFiniteValues) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    EXPECT_THAT(stepsIn(packCoarsely(std::vector<float>{none, 1.0f, -endless})), ElementsAre(-128, 5, -128));
}

} // namespace

} // namespace zn::test
